#include "commands.h"
#include "diagram.h"
#include "genlib.h"
#include "progress.h"
#include "representations.h"
#include "text.h"
#include "text_table.h"

#include <iostream>
#include <utility>

namespace cellfn {

int list(const std::string& file, bool tsv)
{
    const library source = load_library(file);
    text_table table({"cell", "inputs", "column", "external", "internal", "tree", "BDD"});
    std::size_t disagreements = 0;
    {
        progress shown("cells", source.cells.size());
        for (const cell& each : source.cells) {
            shown.begin_item(is_large(each.function));
            representations all(each.function);
            const std::string found = all.check();
            if (!found.empty()) {
                ++disagreements;
                shown.hide();
                print_message(file, each.line, "cell " + each.name + ": " + found);
            }
            std::vector<std::string> row{each.name,
                                         joined(each.function.pins),
                                         all.texts.hexadecimal,
                                         all.external(),
                                         all.internal(),
                                         all.equation(),
                                         bdd_text(all.bdd)};
            if (!tsv) {
                for (std::string& text : row) {
                    text = elide(text, longest_shown);
                }
            }
            table.add(std::move(row));
        }
    }
    if (tsv) {
        table.print_tsv(std::cout);
    } else {
        table.print_aligned(std::cout, output_width());
        std::cout << table.size() << " cells, " << disagreements << " disagreements\n";
    }
    const bool has_error = print_diagnostics(source);
    return has_error || disagreements > 0 ? exit_trouble : exit_success;
}

} // namespace cellfn
