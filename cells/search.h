/// @file
/// @brief The search for the ways to put a function's inputs on a cell's pins.
#pragma once

#include "basbdcells/matcher.h"
#include "signature.h"

#include <functional>
#include <vector>

namespace basbdcells {

/// A table of functions, and what tells its inputs apart; the inputs above these stay in place.
struct prepared {
    prepared(BOOL_TRUTH_TABLE functions, std::size_t inputs)
        : table(std::move(functions)), traits(table, inputs)
    {
    }
    BOOL_TRUTH_TABLE table;
    signature traits;
};

/// Which bindings are wanted.
enum class search_for {
    any,         ///< one, whatever its complements
    at_most,     ///< one with so many complements of inputs or fewer
    each_exactly ///< all with exactly so many
};

/// @brief Calls `found` with what stands on each pin of `cell`, checked before.
/// @return whether there was a binding
bool search(const prepared& cell, const prepared& target, search_for wanted, int complements,
            const std::function<void(const std::vector<connection>&)>& found);

} // namespace basbdcells
