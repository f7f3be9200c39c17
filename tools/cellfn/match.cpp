#include "basbdcells/text.h"
#include "commands.h"
#include "progress.h"
#include "sources.h"
#include "terminal.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <set>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <variant>

namespace cellfn {

namespace {

using basbdcells::binding;
using basbdcells::candidate;
using basbdcells::connection;
using basbdcells::matcher;

std::vector<basbdcells::function> read_functions(const match_request& wanted,
                                                 const std::vector<std::string>& pins)
{
    if (wanted.functions.size() > basbdcells::max_functions) {
        throw std::runtime_error(std::to_string(wanted.functions.size()) +
                                 " functions; expected at most " +
                                 std::to_string(basbdcells::max_functions));
    }
    std::vector<basbdcells::function> all;
    for (const std::string& text : wanted.functions) {
        auto read = basbdcells::read_function(text, wanted.width, pins);
        if (const auto* message = std::get_if<std::string>(&read)) {
            throw std::runtime_error(*message);
        }
        all.push_back(std::get<basbdcells::function>(std::move(read)));
    }
    return all;
}

basbdcells::shared_functions share(const std::vector<basbdcells::function>& all)
{
    basbdcells::shared_functions shared = basbdcells::share_inputs(all);
    if (shared.tables.empty()) {
        throw std::runtime_error("the functions have " + std::to_string(shared.inputs.size()) +
                                 " inputs; expected at most " +
                                 std::to_string(basbdcells::max_inputs));
    }
    return shared;
}

/// What each pin carries: an input, `!` and an input, or a constant.
value pins_of(const candidate& cell, const binding& how, const std::vector<std::string>& inputs)
{
    value pins = value::object();
    for (std::size_t i = 0; i < cell.pins.size(); ++i) {
        const connection& each = how.pins[i];
        pins[cell.pins[i]] =
            each.input == connection::tied
                ? (each.constant ? "1" : "0")
                : (each.inverted ? "!" : "") + inputs[static_cast<std::size_t>(each.input)];
    }
    return pins;
}

/// One text, or a list where several functions are wanted.
value one_or_all(std::vector<std::string> texts)
{
    return texts.size() == 1 ? value(std::move(texts.front())) : value(std::move(texts));
}

/// Prints matches as they come: with every binding wanted there may be too many to keep.
class match_printer {
public:
    match_printer(const sources& from, const selection& how, const match_request& request,
                  const std::vector<std::string>& names,
                  const std::vector<basbdcells::match>& found)
        : given(from), wanted(request), inputs(names),
          rows(std::cout, how.shown, columns_for(how, found), output_width())
    {
    }

    void print(const candidate& cell, const binding& how)
    {
        std::vector<std::string> outputs;
        std::vector<std::string> tables;
        for (std::size_t i = 0; i < cell.outputs.size(); ++i) {
            const basbdcells::output& each = cell.source->outputs[cell.outputs[i]];
            outputs.push_back((how.inverted_outputs[i] ? "!" : "") + each.name);
            tables.push_back(basbdcells::table_of(each.function).value.get_hex_string());
        }
        const auto cost = basbdcells::match{cell, how}.cost(wanted.inverter_area);
        rows.add({cell.source->name, one_or_all(std::move(outputs)), area_of(*cell.source),
                  cell.pins, one_or_all(std::move(tables)), how.complements(),
                  cost ? value(*cost) : value(), given.file_of(cell.source),
                  pins_of(cell, how, inputs)});
        note_ties(cell, how);
    }

    /// Ends the table and explains what is tied.
    void finish(const std::string& summary)
    {
        rows.finish(summary);
        if (!idle.empty()) {
            tell("note: " + joined(idle) + " at 0: the outputs that are used do not depend on it");
        }
        if (!enabling.empty()) {
            tell("note: " + joined(enabling) +
                 ": tied to the value with which a three-state output drives");
        }
    }

private:
    std::vector<column> columns_for(const selection& how,
                                    const std::vector<basbdcells::match>& found) const
    {
        std::size_t area_width = 4;
        std::size_t cell_width = 4;
        std::size_t output_width = 6;
        for (const basbdcells::match& each : found) {
            cell_width = std::max(cell_width, basbdcells::printable(each.cell.source->name).size());
            area_width = std::max(area_width, text_of(area_of(*each.cell.source)).size());
            std::size_t width = 0;
            for (const std::size_t output : each.cell.outputs) {
                width += basbdcells::printable(each.cell.source->outputs[output].name).size() + 2;
            }
            output_width = std::max(output_width, width - 1);
        }
        std::size_t library_width = 7;
        for (const std::string& each : how.files) {
            library_width = std::max(library_width, basbdcells::printable(each).size());
        }
        const auto cost = wanted.inverter_area > 0 ? on_terminal::whole : on_terminal::hidden;
        const auto library = how.files.size() > 1 ? on_terminal::cut : on_terminal::hidden;
        return {{"cell", on_terminal::whole, always, cell_width},
                {"output", on_terminal::whole, always, output_width},
                {"area", on_terminal::whole, 2, area_width},
                {"inputs", on_terminal::hidden},
                {"column", on_terminal::hidden},
                {"complements", on_terminal::hidden},
                {"cost", cost, 3, area_width},
                {"library", library, 1, library_width},
                {"pins", on_terminal::wrapped}};
    }

    void note_ties(const candidate& cell, const binding& how)
    {
        std::set<std::string> names; // of the pins that let the outputs drive
        for (const std::size_t output : cell.outputs) {
            const auto& pins = cell.source->outputs[output].three_state.pins;
            names.insert(pins.begin(), pins.end());
        }
        for (std::size_t i = 0; i < cell.pins.size(); ++i) {
            std::vector<std::string>& told = names.count(cell.pins[i]) > 0 ? enabling : idle;
            const std::string name = basbdcells::printable(cell.pins[i]);
            if (how.pins[i].input == connection::tied &&
                std::find(told.begin(), told.end(), name) == told.end()) {
                told.push_back(name);
            }
        }
    }

    const sources& given;
    const match_request& wanted;
    const std::vector<std::string>& inputs;
    table rows;
    std::vector<std::string> idle;     ///< tied pins without effect
    std::vector<std::string> enabling; ///< tied pins of three-state outputs
};

/// Every binding, in the order of cost, complements and name.
void print_all(const std::vector<basbdcells::match>& found, const matcher& search,
               const match_request& wanted, match_printer& printer)
{
    struct step {
        double cost;
        int complements;
        const basbdcells::match* of;
    };
    std::vector<step> steps; // the matches are in order of cost already, and then of name
    for (const basbdcells::match& each : found) {
        const double area =
            each.cell.source->area.value_or(std::numeric_limits<double>::infinity());
        for (int count = each.connections.complements();
             count <= search.most_complements(each.cell.functions); ++count) {
            steps.push_back({area + wanted.inverter_area * count, count, &each});
        }
    }
    std::stable_sort(steps.begin(), steps.end(), [](const step& left, const step& right) {
        return std::tie(left.cost, left.complements, left.of->cell.source->name) <
               std::tie(right.cost, right.complements, right.of->cell.source->name);
    });
    for (const step& each : steps) {
        search.for_each(each.of->cell.functions, each.complements, [&](binding how) {
            basbdcells::tie_the_rest(each.of->cell, how);
            printer.print(each.of->cell, how);
        });
    }
}

std::size_t count_cells(const std::vector<basbdcells::match>& found)
{
    std::set<const basbdcells::cell*> cells;
    for (const basbdcells::match& each : found) {
        cells.insert(each.cell.source);
    }
    return cells.size();
}

/// The inputs that the texts name; a column names them all.
std::set<std::string> named_inputs(const std::vector<basbdcells::function>& read)
{
    std::set<std::string> names;
    for (const basbdcells::function& each : read) {
        if (each.source.steps.empty()) {
            names.insert(each.inputs.begin(), each.inputs.end());
        }
        for (const basbdcells::step& step : each.source.steps) {
            if (step.kind == basbdcells::step_kind::pin) {
                names.insert(each.source.pins[step.pin]);
            }
        }
    }
    return names;
}

void print_unused_inputs(const basbdcells::function_set& wanted,
                         const std::vector<std::string>& inputs, const std::set<std::string>& named)
{
    std::string unused;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const std::vector<int>& support = wanted.support();
        if (named.count(inputs[i]) > 0 &&
            std::find(support.begin(), support.end(), static_cast<int>(i)) == support.end()) {
            unused += ' ' + basbdcells::printable(inputs[i]);
        }
    }
    if (!unused.empty()) {
        tell("note: inputs without effect on what is wanted:" + unused);
    }
}

std::vector<basbdcells::match> find(const sources& given, const matcher& search)
{
    std::vector<basbdcells::match> found;
    progress shown("cells", given.cells().size());
    for (const sources::entry& each : given.cells()) {
        shown.begin_item();
        for (basbdcells::match& one : search.matches_of(*each.cell)) {
            found.push_back(std::move(one));
        }
    }
    return found;
}

void tell_none(const sources& given, const match_request& wanted)
{
    if (!given.is_unreadable()) {
        const bool is_exact = wanted.inverters == basbdcells::inverters::none;
        tell("cellfn: no cell of " + given.names() + " implements " +
             basbdcells::quoted(joined(wanted.functions)) +
             (is_exact ? " without complements" : ""));
    }
}

} // namespace

int match(const selection& from, const match_request& wanted)
{
    const sources given(from, sources::advice::followed);
    const bool has_error = given.print_diagnostics();
    const std::vector<basbdcells::function> read = read_functions(wanted, given.pins());
    const basbdcells::shared_functions functions = share(read);
    const basbdcells::function_set target(functions.tables);
    const matcher search(target, wanted.inverters);
    std::vector<basbdcells::match> found = find(given, search);
    const int status = has_error ? exit_trouble : found.empty() ? exit_no_match : exit_success;
    if (found.empty()) {
        tell_none(given, wanted);
        if (from.shown == format::aligned) {
            return status;
        }
    }
    basbdcells::sort_matches(found, wanted.inverter_area);
    match_printer printer(given, from, wanted, functions.inputs, found);
    if (wanted.all) {
        print_all(found, search, wanted, printer);
    } else {
        for (const basbdcells::match& each : found) {
            printer.print(each.cell, each.connections);
        }
    }
    printer.finish(std::to_string(count_cells(found)) + " of " +
                   std::to_string(given.cells().size()) + " cells");
    if (!found.empty()) {
        print_unused_inputs(target, functions.inputs, named_inputs(read));
    }
    return status;
}

} // namespace cellfn
