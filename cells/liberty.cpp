#include "liberty.h"

#include "basbdcells/text.h"
#include "diagnostics.h"
#include "liberty_cell.h"
#include "liberty_outputs.h"
#include "liberty_statement.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace basbdcells {

namespace {

/// How deep a statement stands; below these, everything is passed over.
enum class place { file, library, cell, bus, pin };

/// A group whose end has not come.
struct open_group {
    place where;
    std::string name;
    int line; ///< 0 for a library that is missing and taken for granted
    pin_range pins;
};

/// How many of the words in parentheses say something of a cell's function.
std::size_t words_to_keep(std::string_view name)
{
    const bool is_list = is_pin_group(name) || is_state_group(name) || name == "members";
    return name == "cell" || name == "include_file" ? 2 : is_list ? std::string::npos : 0;
}

/// Walks from statement to statement; the groups that are open stand on a stack.
class liberty_reader {
public:
    liberty_reader(scanner& source, library& to) : text(source), read(to), outputs(to) {}

    void run()
    {
        bool is_cut = false;
        while (next_step(is_cut)) {
        }
        if (!is_cut) {
            report_open_groups();
        }
        close_down_to(place::file);
        outputs.finish();
    }

private:
    place here() const { return open.empty() ? place::file : open.back().where; }
    bool is_kept() const { return passed_depth == 0; }
    void fail(int line, const std::string& message)
    {
        add_diagnostic(read, {line, (line > 0 ? place_text() : "") + message, true});
    }

    /// @param is_cut  becomes whether the text ends in the middle of something
    /// @return whether there was anything left
    bool next_step(bool& is_cut)
    {
        try {
            if (text.peek() == scanner::end) {
                return false;
            }
            step();
        } catch (const text_error& error) {
            fail(error.line, error.what());
            const bool is_fault_of_file = error.line == 0;
            is_cut = is_fault_of_file || text.next() == scanner::end;
            return !is_fault_of_file;
        }
        return true;
    }

    void step()
    {
        if (text.take_if(';')) {
            return;
        }
        if (text.next() != '}') {
            read_statement();
            return;
        }
        if (passed_depth > 0) {
            --passed_depth;
        } else if (open.empty()) {
            fail(text.line(), "'}' without '{'");
        } else {
            close();
        }
        text.take();
    }

    void read_statement()
    {
        const int line = text.line();
        const int first = text.next();
        const std::string name = take_name(text);
        const int sign = text.peek();
        if (!name.empty() && (sign == ':' || sign == '=')) {
            text.take();
            read_attribute(name, line);
        } else if (!name.empty() && sign == '(') {
            text.take();
            read_group_or_list(name, line);
        } else {
            fail(line, name.empty() ? "expected a statement or '}' instead of " + shown(first)
                                    : "expected ':' or '(' after " + quoted(name));
            const bool is_next_statement = text.line() != line;
            if (!is_next_statement && pass_statement(text)) {
                pass_group(text.line());
            }
        }
    }

    void pass_group(int line)
    {
        if (passed_depth++ == 0) {
            passed_line = line;
        }
    }

    void read_attribute(const std::string& name, int line)
    {
        const bool is_wanted = is_kept() && here() >= place::cell;
        const bool is_string = text.peek() == '"';
        const int value_line = text.line();
        const placed_text value{take_value(text, is_wanted ? std::string::npos : 0), value_line};
        if (!is_wanted) {
            return;
        }
        const std::string fault =
            !is_string && value.text.empty() ? "expected a value of " + quoted(name)
            : here() == place::cell          ? current.set_attribute(name, value.text)
                                    : current.set_pin_attribute(open.back().pins, name, value);
        if (!fault.empty()) {
            fail(is_string || !value.text.empty() ? value_line : line, fault);
        }
    }

    /// Reads what stands in parentheses; what follows them tells a group from a list.
    void read_group_or_list(const std::string& name, int line)
    {
        const arguments given = take_arguments(text, words_to_keep(name));
        if (!given.fault.empty()) {
            fail(line, given.fault);
        }
        if (text.peek() == '{') {
            text.take();
            close_unended(name, line);
            open_group_of(name, given.words, line);
        } else if (is_kept() && name == "members" && here() == place::bus) {
            for (const std::string& list : given.words) {
                current.add_pins(names_in(list), member_of_bus);
            }
        } else if (is_kept() && name == "include_file" && here() <= place::cell) {
            fail(line, "include_file is not followed");
        }
    }

    /// Closes the groups in which one of this kind cannot stand: their ends are missing.
    void close_unended(const std::string& kind, int line)
    {
        const bool is_unended =
            kind == "cell"
                ? here() >= place::cell || !is_kept()
                : is_pin_group(kind) && (here() == place::pin ||
                                         (here() == place::bus && is_kept() && kind != "pin"));
        if (is_unended) {
            fail(line, "expected '}' before the next " + kind + ", for the group of line " +
                           std::to_string(is_kept() ? open.back().line : passed_line));
            close_down_to(kind == "cell"  ? place::library
                          : kind == "pin" ? place::bus
                                          : place::cell);
        }
    }

    void open_group_of(const std::string& kind, const std::vector<std::string>& names, int line)
    {
        if (!is_kept()) {
            pass_group(line);
        } else if (kind == "cell") {
            open_cell(names, line);
        } else if (here() == place::file) {
            if (kind != "library") {
                fail(line, "expected a library instead of " + quoted(kind));
            }
            open.push_back({place::library, "", line, {}});
        } else if (is_pin_group(kind)) {
            open_pins(kind, names, line);
        } else {
            if (here() == place::cell) {
                current.add_states(kind, names);
            }
            pass_group(line);
        }
    }

    void open_cell(const std::vector<std::string>& names, int line)
    {
        if (names.size() != 1 || names.front().empty()) {
            fail(line, "expected the name of a cell in its parentheses");
            pass_group(line);
            return;
        }
        if (here() == place::file) {
            fail(line, "cell " + shown_name(names.front()) + ": expected inside a library");
            open.push_back({place::library, "", 0, {}});
        }
        current.result.name = names.front();
        current.result.line = line;
        open.push_back({place::cell, names.front(), line, {}});
    }

    /// Opens a group for one or more pins, a bus or a bundle.
    void open_pins(const std::string& kind, const std::vector<std::string>& names, int line)
    {
        if (names.empty() || here() == place::library) {
            fail(line, names.empty()
                           ? "expected a name in the parentheses of " + kind
                           : kind + " " + shown_name(names.front()) + ": expected inside a cell");
            pass_group(line);
            return;
        }
        liberty_pin sample = here() == place::bus ? member_of_bus : liberty_pin();
        sample.is_bus = kind != "pin";
        open.push_back({kind == "pin" ? place::pin : place::bus, names.front(), line,
                        current.add_pins(names, sample)});
    }

    void close()
    {
        const open_group group = std::move(open.back());
        open.pop_back();
        if (group.where == place::cell) {
            outputs.add(std::exchange(current, {}));
        } else if (group.where == place::bus) {
            current.close_bus(group.pins);
        }
    }

    void close_down_to(place where)
    {
        passed_depth = 0;
        while (here() > where) {
            close();
        }
    }

    void report_open_groups()
    {
        if (passed_depth > 0) {
            fail(passed_line, "group without an end");
        }
        for (auto each = open.rbegin(); each != open.rend(); ++each) {
            if (each->line > 0) {
                add_diagnostic(read,
                               {each->line,
                                (each->where == place::library ? "library"
                                                               : "group of " + quoted(each->name)) +
                                    std::string(" without an end"),
                                true});
            }
        }
    }

    /// Which cell and pin a message is about.
    std::string place_text() const
    {
        std::string words;
        for (const open_group& each : open) {
            if (each.where != place::library) {
                words +=
                    (each.where == place::cell ? "cell " : "pin ") + shown_name(each.name) + ": ";
            }
        }
        return words;
    }

    const liberty_pin member_of_bus{{}, {}, false, {}, false, true};

    scanner& text;
    library& read;
    liberty_outputs outputs;
    std::vector<open_group> open; ///< at most five
    std::size_t passed_depth = 0; ///< groups that are open and passed over
    int passed_line = 0;          ///< where the outermost of them began
    liberty_cell current;
};

} // namespace

void read_liberty(scanner& text, library& read) { liberty_reader(text, read).run(); }

} // namespace basbdcells
