#include "basbdcells/text.h"
#include "commands.h"
#include "progress.h"
#include "representations.h"
#include "sources.h"
#include "terminal.h"

#include <iostream>
#include <utility>

namespace cellfn {

namespace {

/// What is to be known of an output beside its function.
value remarks(const basbdcells::cell& source, const basbdcells::output& drives)
{
    value all = value::array();
    if (source.dont_use) {
        all.push_back("dont_use");
    }
    if (!drives.three_state.steps.empty()) {
        all.push_back("three_state");
    }
    return all.empty() ? value() : all;
}

/// Adds a row for each output. @return how many have representations that disagree
std::size_t add_rows(const sources& given, table& rows)
{
    std::size_t disagreements = 0;
    progress shown("cells", given.cells().size());
    for (const sources::entry& each : given.cells()) {
        for (const basbdcells::output& drives : each.cell->outputs) {
            shown.begin_item(is_large(drives.function));
            representations all(drives.function);
            const std::string found = all.check();
            if (!found.empty()) {
                ++disagreements;
                shown.hide();
                print_message(*each.file, drives.line,
                              "cell " + basbdcells::printable(each.cell->name) + ": " + found);
            }
            rows.add({each.cell->name, drives.name, area_of(*each.cell), drives.function.pins,
                      all.texts.hexadecimal, all.external(), all.internal(), all.equation(),
                      bdd_text(all.bdd), remarks(*each.cell, drives), *each.file});
        }
    }
    return disagreements;
}

} // namespace

int list(const selection& from)
{
    const sources given(from, sources::advice::shown);
    if (given.is_unreadable() && from.shown == format::aligned) {
        given.print_diagnostics();
        return exit_trouble;
    }
    bool has_remarks = false;
    for (const sources::entry& each : given.cells()) {
        for (const basbdcells::output& drives : each.cell->outputs) {
            has_remarks |= each.cell->dont_use || !drives.three_state.steps.empty();
        }
    }
    table rows(std::cout, from.shown,
               output_columns(
                   from, {{"external", on_terminal::cut, 3},
                          {"internal", on_terminal::cut, 1},
                          {"tree", on_terminal::cut, 3},
                          {"BDD", on_terminal::cut, 2},
                          {"remarks", has_remarks ? on_terminal::cut : on_terminal::hidden, 2}}),
               output_width());
    const std::size_t disagreements = add_rows(given, rows);
    const bool has_outputs = rows.size() != given.cells().size();
    rows.finish(std::to_string(given.cells().size()) + " cells, " +
                (has_outputs ? std::to_string(rows.size()) + " outputs, " : "") +
                std::to_string(disagreements) + " disagreements");
    const bool has_error = given.print_diagnostics();
    return has_error || disagreements > 0 ? exit_trouble : exit_success;
}

} // namespace cellfn
