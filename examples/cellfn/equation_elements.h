/// @file
/// @brief The elements of an equation that the user wrote.
#pragma once

#include "expression.h"

#include <string>
#include <string_view>
#include <vector>

namespace cellfn {

/// @brief An equation's inputs, constants and signs, as parts of its text.
///
/// The library takes its format at its word: `(A)(B)` is A, the rest is dropped, and `A +` is 1.
/// Who writes that has meant something else.
class equation_elements {
public:
    /// @param text  outlives the object
    equation_elements(std::string_view text, bool in_internal_format);

    /// The number of the highest input that is named; -1 when none is.
    int highest_input() const;

    /// What is missing between two elements of an equation that the library can read, and where;
    /// empty when nothing is.
    std::string find_gap() const;

    /// An equation without a gap as an expression over these pins, of which the first is input 0.
    expression to_expression(std::vector<std::string> pins) const;

private:
    std::string_view equation;
    bool is_internal;
    std::vector<std::string_view> elements;
};

} // namespace cellfn
