/// @file
/// @brief A function that a user gives as text.
#pragma once

#include "basbdcells/expression.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace basbdcells {

/// @addtogroup cells Cell libraries
/// @{

/// A function over named inputs.
struct function {
    std::vector<std::string> inputs; ///< input i of `table` has the name `inputs[i]`
    BOOL_TRUTH_TABLE table;          ///< its values
    expression source;               ///< over all `inputs`; without steps when the text is a column
};

/// @brief Reads a function.
///
///     !(a1*a2 + b)  sel'*d0 | sel*d1  A ^ B   pins by name, as cell libraries write functions
///     AB + !C                                 single letters: A is input 0
///     F0=(B0*B1@~B2)                          the library's internal equation
///     0xE8                                    a column, entry 0 last
///
/// Signs are those of genlib and Liberty, `~` too. Where XOR and AND stand side by side those
/// formats differ, so parentheses are wanted. Upper-case letters without a blank between them are a
/// product of single letters when all names in the text are such letters and none is in `pins`;
/// quotation marks make a name of anything.
/// @param text   at least one operand
/// @param width  the number of inputs, at most `max_inputs`; 0 for as many as the text names or has
/// digits for
/// @param pins   names that cells have
/// @return the function, or what is wrong with the text, printable
BASBD_API std::variant<function, std::string>
read_function(std::string_view text, int width = 0, const std::vector<std::string>& pins = {});

/// @}

} // namespace basbdcells
