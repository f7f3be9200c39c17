/// @file
/// @brief A function that the user gives as an argument.
#pragma once

#include "basbdtt.h"
#include "expression.h"

#include <string>
#include <vector>

namespace cellfn {

/// What the user wrote, read.
class function_argument {
public:
    /// @brief Reads an equation or, behind "0x", a column.
    ///
    /// An equation is in the internal format when it starts with "F0=" or has a "B" before a
    /// digit, and in the external format otherwise. Throws std::runtime_error, also where the
    /// library would drop a part of the equation or take a gap in it for a constant.
    /// @param width  the number of inputs; 0 for as many as `text` names or has digits for
    function_argument(std::string text, int width);

    /// The equation as it was written or, for a column, the library's own.
    expression source() const;

    BOOL_TRUTH_TABLE table;
    std::vector<std::string> inputs; ///< as the user's format names them

private:
    void read_column(int width);
    void read_equation(int width);
    void refuse_messages(const std::string& expected) const;
    [[noreturn]] void refuse(const std::string& why) const;

    std::string given;
    bool is_column;
    bool is_internal; ///< of an equation
};

} // namespace cellfn
