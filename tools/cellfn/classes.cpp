#include "commands.h"
#include "sources.h"
#include "terminal.h"

#include <iostream>

namespace cellfn {

int classes(const selection& from, basbdcells::inverters use)
{
    const sources given(from, sources::advice::followed);
    const bool has_error = given.print_diagnostics();
    if (given.is_unreadable() && from.shown == format::aligned) {
        return exit_trouble;
    }
    std::vector<const basbdcells::cell*> cells;
    for (const sources::entry& each : given.cells()) {
        cells.push_back(each.cell);
    }
    const std::vector<basbdcells::cell_class> found = basbdcells::classes_of(cells, use);
    table rows(std::cout, from.shown, output_columns(from, {{"class", on_terminal::whole}}),
               output_width());
    for (std::size_t i = 0; i < found.size(); ++i) {
        for (const basbdcells::cell_output& each : found[i].members) {
            const basbdcells::output& drives = each.source->outputs[each.output];
            rows.add({each.source->name, drives.name, area_of(*each.source), drives.function.pins,
                      basbdcells::table_of(drives.function).value.get_hex_string(), i + 1,
                      given.file_of(each.source)});
        }
    }
    rows.finish(std::to_string(rows.size()) + " outputs in " + std::to_string(found.size()) +
                " classes");
    return has_error ? exit_trouble : exit_success;
}

} // namespace cellfn
