#include "liberty.h"

#include "basbdcells/text.h"
#include "liberty_cell.h"
#include "numbers.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace basbdcells {

namespace {

constexpr char_set value_characters = char_set(" \t\r\n\v\f\"{}();").complemented();
constexpr char_set argument_characters = value_characters.without(",");
constexpr char_set name_of_statement = argument_characters.without(":=");

/// Of what is passed over only this much is kept, to be named in a message.
constexpr std::size_t longest_passed = 2 * longest_quoted;

/// How deep a statement stands; below these, everything is passed over.
enum class place { file, library, cell, bus, pin };

/// A group whose end has not come.
struct open_group {
    place where;
    std::string name;
    int line;
    std::size_t first_pin = 0; ///< its pins, up to the last one that the cell has now
    std::size_t last_pin = 0;
};

pin_direction direction_of(const std::string& text)
{
    return text == "input"      ? pin_direction::input
           : text == "output"   ? pin_direction::output
           : text == "inout"    ? pin_direction::inout
           : text == "internal" ? pin_direction::internal
                                : pin_direction::unknown;
}

/// The names in a string, with blanks or commas between them.
std::vector<std::string> names_in(const std::string& list)
{
    constexpr char_set name_of_list = char_set(" \t\r\n\v\f,").complemented();
    std::vector<std::string> names;
    scanner words(list, comments::none);
    while (words.peek() != scanner::end) {
        if (!words.take_if(',')) {
            names.push_back(words.take_word(name_of_list));
        }
    }
    return names;
}

/// Walks from statement to statement; the groups that are open stand on a stack.
class liberty_reader {
public:
    liberty_reader(scanner& source, library& to) : text(source), read(to), outputs(to) {}

    void run()
    {
        try {
            while (text.peek() != scanner::end) {
                step();
            }
            report_open_groups();
        } catch (const text_error& error) { // the text cannot be read on
            fail(error.line, error.what());
        }
        close_down_to(place::file);
        outputs.finish();
    }

private:
    place here() const { return open.empty() ? place::file : open.back().where; }
    bool is_kept() const { return passed_depth == 0; }
    void fail(int line, const std::string& message)
    {
        read.diagnostics.push_back({line, message, true});
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
        const std::string name = text.take_if('"')
                                     ? text.take_string(longest_passed)
                                     : text.take_word(name_of_statement, longest_passed);
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
            if (text.line() == line) { // else the next statement has come
                pass_statement();
            }
        }
    }

    /// Goes on behind the line, or behind what ends a statement on it.
    void pass_statement()
    {
        for (int c = text.next(); c != scanner::end && c != '}'; c = text.next()) {
            text.take();
            if (c == '{') {
                pass_group(text.line());
                return;
            }
            if (c == '"') {
                text.take_string(0);
            } else if (c == ';' || c == '\n') {
                return;
            }
        }
    }

    void pass_group(int line)
    {
        if (passed_depth++ == 0) {
            passed_line = line;
        }
    }

    /// Reads the value up to ";" or, where that is missing, to the end of the line.
    void read_attribute(const std::string& name, int line)
    {
        const bool is_wanted = is_kept() && here() >= place::cell;
        const std::size_t limit = is_wanted ? std::string::npos : longest_passed;
        text.peek();
        const int value_line = text.line();
        const bool is_string = text.take_if('"');
        const std::string value =
            is_string ? text.take_string(is_wanted ? limit : 0) : bare_value(limit);
        if (!is_wanted) {
            return;
        }
        if (!is_string && value.empty()) {
            fail(line, place_text() + "expected a value of " + quoted(name));
        } else if (here() == place::cell) {
            set_cell_attribute(name, {value, value_line});
        } else {
            set_pin_attribute(name, {value, value_line});
        }
    }

    /// A word, a number, or an arithmetic expression, which may go on behind an operator.
    std::string bare_value(std::size_t limit)
    {
        std::string value;
        while (true) {
            const int c = text.next();
            const bool goes_on = !value.empty() && std::string_view("+-*/").find(value.back()) !=
                                                       std::string_view::npos;
            if (c == scanner::end || c == ';' || c == '{' || c == '}' || c == '"' ||
                (c == '\n' && !goes_on)) {
                return value;
            }
            if (c == '\n') {
                text.take();
            } else if (c == '(' || c == ')') {
                value += static_cast<char>(c);
                text.take();
            } else {
                value += text.take_word(value_characters, limit - std::min(limit, value.size()));
            }
            text.pass_blanks_of_line();
        }
    }

    /// Reads what stands in parentheses; what follows them tells a group from a list.
    void read_group_or_list(const std::string& name, int line)
    {
        const bool is_cell = name == "cell";
        const bool is_wanted = is_cell || (is_kept() && here() != place::pin);
        const std::vector<std::string> arguments = read_arguments(line, is_wanted);
        if (text.peek() == '{') {
            text.take();
            if (is_cell && here() >= place::cell) {
                fail(line, place_text() +
                               "expected '}' before the next cell, for the group of line " +
                               std::to_string(is_kept() ? open.back().line : passed_line));
                close_down_to(place::library);
            }
            open_group_of(name, arguments, line);
        } else if (name == "members" && is_kept() && here() == place::bus) {
            for (const std::string& list : arguments) {
                add_members(list);
            }
        }
    }

    std::vector<std::string> read_arguments(int line, bool is_wanted)
    {
        const std::size_t limit = is_wanted ? std::string::npos : 0;
        std::vector<std::string> arguments;
        std::size_t depth = 0; // of parentheses inside
        while (true) {
            const int c = text.peek();
            if (c == scanner::end || c == '{' || c == '}' || c == ';') {
                fail(line, place_text() + "expected ')' before " + shown(c));
                return arguments;
            }
            text.take_if(',');
            if (text.take_if(')')) {
                if (depth == 0) {
                    return arguments;
                }
                --depth;
                continue;
            }
            if (text.take_if('(')) {
                ++depth;
                continue;
            }
            if (c == ',') {
                continue;
            }
            std::string word = text.take_if('"') ? text.take_string(limit)
                                                 : text.take_word(argument_characters, limit);
            if (is_wanted) {
                arguments.push_back(std::move(word));
            }
        }
    }

    void open_group_of(const std::string& kind, const std::vector<std::string>& names, int line)
    {
        if (!is_kept()) {
            pass_group(line);
        } else if (kind == "library" && here() == place::file) {
            open.push_back({place::library, "", line});
        } else if (kind == "cell") {
            open_cell(names, line);
        } else if ((kind == "pin" || kind == "bus" || kind == "bundle") &&
                   (here() == place::cell || (here() == place::bus && kind == "pin"))) {
            open_pins(kind, names, line);
        } else {
            if (here() == place::file) {
                fail(line, "expected a library instead of " + quoted(kind));
            } else if (here() == place::cell) {
                add_states(kind, names);
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
            fail(line, "cell " + printable(names.front()) + ": expected inside a library");
        }
        current = {};
        current.result.name = names.front();
        current.result.line = line;
        open.push_back({place::cell, names.front(), line});
    }

    /// Opens a group for one or more pins, a bus or a bundle.
    void open_pins(const std::string& kind, const std::vector<std::string>& names, int line)
    {
        if (names.empty()) {
            fail(line, place_text() + "expected a name in the parentheses of " + kind);
            pass_group(line);
            return;
        }
        const std::size_t first = current.pins.size();
        for (const std::string& name : names) {
            liberty_pin made;
            made.result.name = name;
            made.is_bus = kind != "pin";
            made.is_member = here() == place::bus;
            current.pins.push_back(std::move(made));
        }
        open.push_back({kind == "pin" ? place::pin : place::bus, names.front(), line, first,
                        current.pins.size()});
    }

    void add_members(const std::string& list)
    {
        for (std::string& name : names_in(list)) {
            liberty_pin made;
            made.result.name = std::move(name);
            made.is_member = true;
            current.pins.push_back(std::move(made));
        }
    }

    /// The variables of a state group: of a table the second list, of the others every name.
    void add_states(const std::string& kind, const std::vector<std::string>& names)
    {
        const bool is_table = kind == "statetable";
        if (!is_table && kind != "ff" && kind != "latch" && kind != "ff_bank" &&
            kind != "latch_bank") {
            return;
        }
        for (std::size_t i = is_table ? 1 : 0; i < names.size(); ++i) {
            for (std::string& name : names_in(names[i])) {
                current.states.insert(std::move(name));
            }
        }
    }

    void set_cell_attribute(const std::string& name, const placed_text& value)
    {
        cell& made = current.result;
        if (name == "area") {
            made.area = to_number(value.text);
            if (!made.area) {
                fail(value.line, place_text() + "expected a number as the area instead of " +
                                     quoted(value.text));
            }
        } else if (name == "dont_use") {
            made.dont_use = value.text == "true";
        } else {
            made.attributes.push_back({name, value.text});
        }
    }

    void set_pin_attribute(const std::string& name, const placed_text& value)
    {
        if (name == "direction" && direction_of(value.text) == pin_direction::unknown) {
            fail(value.line,
                 place_text() + "expected a direction instead of " + quoted(value.text));
        }
        const open_group& group = open.back();
        for (std::size_t i = group.first_pin; i < group.last_pin; ++i) {
            liberty_pin& made = current.pins[i];
            if (name == "direction") {
                made.result.direction = direction_of(value.text);
            } else if (name == "function") {
                made.function = value;
            } else if (name == "three_state") {
                made.three_state = value;
            } else {
                made.has_state_function |= name == "state_function";
                made.result.attributes.push_back({name, value.text});
            }
        }
    }

    void close()
    {
        const open_group group = open.back();
        open.pop_back();
        if (group.where == place::cell) {
            outputs.add(std::exchange(current, {}));
        } else if (group.where == place::bus) { // its members go the same way
            for (std::size_t i = group.last_pin; i < current.pins.size(); ++i) {
                pin_direction& direction = current.pins[i].result.direction;
                if (direction == pin_direction::unknown) {
                    direction = current.pins[group.first_pin].result.direction;
                }
            }
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
            fail(passed_line, place_text() + "group without an end");
        }
        for (auto each = open.rbegin(); each != open.rend(); ++each) {
            fail(each->line,
                 (each->where == place::library ? "library" : "group of " + quoted(each->name)) +
                     std::string(" without an end"));
        }
    }

    /// Which cell and pin a message is about.
    std::string place_text() const
    {
        std::string words;
        for (const open_group& each : open) {
            if (each.where != place::library) {
                words +=
                    (each.where == place::cell ? "cell " : "pin ") + printable(each.name) + ": ";
            }
        }
        return words;
    }

    scanner& text;
    library& read;
    liberty_outputs outputs;
    std::vector<open_group> open; ///< at most four
    std::size_t passed_depth = 0; ///< groups that are open and passed over
    int passed_line = 0;          ///< where the outermost of them began
    liberty_cell current;
};

} // namespace

void read_liberty(scanner& text, library& read) { liberty_reader(text, read).run(); }

} // namespace basbdcells
