#include "basbdcells/matcher.h"

#include <iostream>
#include <variant>

/// Prints the cheapest cell that is the function of inverting input 2 of the majority function.
int main()
{
    using namespace basbdcells;
    const library cells = read_library("GATE other 2 y=a*b+c; GATE 8E 3 y=a*b + a*!c + b*!c;");
    const auto wanted = std::get<function>(read_function("sel*en + !off*(sel + en)"));
    for (const match& each : find_matches(cells.cells, function_set({wanted.table}))) {
        std::cout << each.cell.source->name << '\n';
    }
}
