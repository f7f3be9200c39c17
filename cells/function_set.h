/// @file
/// @brief Several functions as one, so that one search serves any number of them.
#pragma once

#include "basbdcells/matcher.h"
#include "signature.h"

#include <cstddef>
#include <vector>

namespace basbdcells {

/// @brief Functions of the same inputs as one table.
///
/// Function j is the block of the column where the inputs above theirs, the selectors, have the
/// value j:
///
///     a and b, a or b:  E8     entries 7 to 4 are the second function, 3 to 0 the first
struct function_set::state {
    std::vector<int> support; ///< the numbers that the inputs had before
    std::size_t functions = 1;
    int width = 0; ///< inputs of each block: those of `support`, at least one
    int selectors = 0;
    BOOL_TRUTH_TABLE table;
    std::vector<TRUTH_TABLE_VAL> blocks; ///< the constant 1 in the place of each function

    /// The table with function j complemented for every bit j.
    BOOL_TRUTH_TABLE with_complements(unsigned complemented) const;
};

/// The table of a function over `width` inputs, of which it does not depend on the further ones.
BOOL_TRUTH_TABLE repeated(BOOL_TRUTH_TABLE table, int width);

} // namespace basbdcells
