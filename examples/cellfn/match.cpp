#include "column.h"
#include "commands.h"
#include "function_argument.h"
#include "genlib.h"
#include "matcher.h"
#include "progress.h"
#include "text.h"

#include <algorithm>
#include <iostream>
#include <sstream>

namespace cellfn {

namespace {

/// What each pin carries: an input, `!` and an input, or "-" where any value will do.
std::string pins_text(const cell& source, const reduced_function& pins, const binding& connection,
                      const reduced_function& target, const std::vector<std::string>& names)
{
    std::vector<std::string> values(source.function.pins.size(), "-");
    for (std::size_t i = 0; i < pins.inputs.size(); ++i) {
        const int input = target.inputs[static_cast<std::size_t>(connection.input[i])];
        values[static_cast<std::size_t>(pins.inputs[i])] =
            (connection.inverted[i] ? "!" : "") + names[static_cast<std::size_t>(input)];
    }
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        text += (i == 0 ? "" : " ") + source.function.pins[i] + '=' + values[i];
    }
    return text;
}

/// Prints rows one by one: with every binding wanted there may be too many to keep.
class row_printer {
public:
    row_printer(const library& source, bool tab_separated) : tsv(tab_separated)
    {
        for (const cell& each : source.cells) {
            name_width = std::max(name_width, each.name.size());
            output_width = std::max(output_width, each.output.size() + 1);
        }
    }

    /// Before the first row comes the header.
    void print(const std::vector<std::string>& row)
    {
        if (!has_header) {
            has_header = true;
            print({"cell", "area", "output", "pins"});
        }
        std::cout << padded(row[0], name_width) << padded(row[1], area_width)
                  << padded(row[2], output_width) << row[3] << '\n';
    }

private:
    std::string padded(const std::string& text, std::size_t width) const
    {
        if (tsv) {
            return text + '\t';
        }
        return text + std::string(width - std::min(width, text.size()) + 2, ' ');
    }

    static constexpr std::size_t area_width = 6;
    bool tsv;
    std::size_t name_width = 4;
    std::size_t output_width = 6;
    bool has_header = false;
};

std::string number_text(double value)
{
    std::ostringstream text;
    text << value;
    return text.str();
}

} // namespace

int match(const std::string& file, const std::string& function, int width, match_options options,
          bool tsv)
{
    const function_argument wanted(function, width);
    const library source = load_library(file);
    const bool has_error = print_diagnostics(source);
    const matchable target(wanted.table);
    row_printer rows(source, tsv);
    progress shown("cells", source.cells.size());
    std::size_t matching = 0;
    for (const cell& each : source.cells) {
        shown.begin_item();
        const matchable candidate(to_table(each.function));
        const bool is_match =
            match_cell(candidate, target, options, [&](const binding& connection) {
                shown.hide();
                rows.print({each.name, number_text(each.area),
                            (connection.output_inverted ? "!" : "") + each.output,
                            pins_text(each, candidate.function, connection, target.function,
                                      wanted.inputs)});
            });
        matching += is_match ? 1 : 0;
    }
    shown.hide();
    if (matching == 0) {
        std::cerr << one_line("cellfn: no cell of " + file + " implements '" +
                              elide(function, longest_quoted) +
                              (options.exact ? "' without complements" : "'"))
                  << '\n';
    } else if (!tsv) {
        std::cout << matching << " of " << source.cells.size() << " cells\n";
    }
    if (has_error) {
        return exit_trouble;
    }
    return matching == 0 ? exit_no_match : exit_success;
}

} // namespace cellfn
