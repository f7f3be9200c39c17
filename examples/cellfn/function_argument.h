/// @file
/// @brief A function that the user gives as an argument.
#pragma once

#include "basbdtt.h"

#include <string>
#include <vector>

namespace cellfn {

/// What the user wrote, read.
struct function_argument {
    BOOL_TRUTH_TABLE table;
    std::vector<std::string> inputs; ///< the inputs as the user's format names them
};

/// @brief Reads an equation or, behind "0x", a column.
///
/// An equation is in the internal format when it starts with "F0=" or has a "B" before a digit, and
/// in the external format otherwise. Throws usage_error.
/// @param width  the number of inputs; 0 for as many as `text` names or has digits for
function_argument read_function(const std::string& text, int width);

} // namespace cellfn
