#include "basbdcells/text.h"
#include "commands.h"
#include "progress.h"
#include "representations.h"
#include "sources.h"

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

} // namespace

int list(const selection& from)
{
    const sources given(from, sources::advice::shown);
    if (given.is_unreadable()) {
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
               {{"cell", on_terminal::whole},
                {"output", on_terminal::whole},
                {"area", on_terminal::whole},
                {"inputs", on_terminal::cut},
                {"column", on_terminal::cut},
                {"external", on_terminal::third},
                {"internal", on_terminal::first},
                {"tree", on_terminal::third},
                {"BDD", on_terminal::second},
                {"remarks", has_remarks ? on_terminal::second : on_terminal::hidden},
                {"library", from.files.size() > 1 ? on_terminal::first : on_terminal::hidden}},
               output_width());
    std::size_t disagreements = 0;
    {
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
    }
    const std::string left_out = rows.finish();
    if (from.shown == format::aligned) {
        std::cout << given.cells().size() << " cells, ";
        if (rows.size() != given.cells().size()) {
            std::cout << rows.size() << " outputs, ";
        }
        std::cout << disagreements << " disagreements\n";
        if (!left_out.empty()) {
            std::cout << "not shown for want of room:" << left_out
                      << "; --tsv and --json print all\n";
        }
    }
    const bool has_error = given.print_diagnostics();
    return has_error || disagreements > 0 ? exit_trouble : exit_success;
}

} // namespace cellfn
