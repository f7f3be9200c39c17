#include "column.h"
#include "commands.h"
#include "genlib.h"
#include "progress.h"
#include "table_texts.h"
#include "text_table.h"

#include <iostream>

namespace cellfn {

namespace {

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& each : words) {
        text += (text.empty() ? "" : " ") + each;
    }
    return text;
}

} // namespace

int list(const std::string& file, bool tsv)
{
    const library source = load_library(file);
    text_table table({"cell", "inputs", "column", "external", "internal"});
    std::size_t disagreements = 0;
    {
        progress shown("cells", source.cells.size());
        for (const cell& each : source.cells) {
            const BOOL_TRUTH_TABLE function = to_table(each.function);
            const table_texts texts(function);
            const std::string found = check_texts(function, texts);
            if (!found.empty()) {
                ++disagreements;
                std::cerr << file << ':' << each.line << ": cell " << each.name << ": " << found
                          << '\n';
            }
            table.add({each.name, joined(each.function.pins), texts.hexadecimal, texts.external,
                       texts.internal});
            shown.advance();
        }
    }
    if (tsv) {
        table.print_tsv(std::cout);
    } else {
        table.print_aligned(std::cout, output_width());
        std::cout << table.size() << " cells, " << disagreements << " disagreements\n";
    }
    const bool has_error = print_diagnostics(source);
    return has_error || disagreements > 0 ? exit_failure : exit_success;
}

} // namespace cellfn
