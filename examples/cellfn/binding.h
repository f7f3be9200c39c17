/// @file
/// @brief How a cell implements a function.
#pragma once

#include "basbdtt.h"

#include <vector>

namespace cellfn {

/// @brief A function without the inputs that it does not depend on.
struct reduced_function {
    explicit reduced_function(BOOL_TRUTH_TABLE function);
    BOOL_TRUTH_TABLE table;  ///< one input for each of `inputs`; of width 1 when there is none
    std::vector<int> inputs; ///< the numbers that the inputs had before
};

/// @brief Connects the pins of a cell to the inputs of a function: pin j carries input `input[j]`,
/// complemented when `inverted[j]` is true. Both count in their reduced functions.
struct binding {
    bool output_inverted = false; ///< the cell's output is the complement of the function
    std::vector<int> input;
    std::vector<bool> inverted;
};

/// @brief Applies a binding to a cell. @return whether the outcome is the target
bool holds(const binding& connection, BOOL_TRUTH_TABLE cell, const BOOL_TRUTH_TABLE& target);

/// Complements a function.
void complement(BOOL_TRUTH_TABLE& table);

} // namespace cellfn
