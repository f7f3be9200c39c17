/// @file
/// @brief Reads the expressions of cell libraries and of users.
#pragma once

#include "basbdcells/expression.h"
#include "scanner.h"

#include <string>
#include <vector>

namespace basbdcells {

/// How tightly an exclusive OR binds beside an AND.
enum class xor_rank {
    below_and,
    above_and,
    needs_parentheses ///< the formats differ, so nobody can know what is meant
};

/// @brief What tells the formats of expressions apart.
///
/// Binding, tightest first: `'` behind an operand, `!` before it; AND; XOR, unless it binds tighter
/// than AND; OR.
struct grammar {
    char terminator; ///< ends the expression and is taken; 0 for the end of the text
    xor_rank exclusive;
    std::string_view signs;   ///< the operators and parentheses that the format has
    bool has_digits;          ///< 0 and 1 are constants
    bool has_names;           ///< CONST0 and CONST1 are constants
    bool has_quotes;          ///< a pin may be in quotation marks
    bool has_blanks;          ///< operands side by side are a product
    bool has_letters = false; ///< every letter is a pin
};

constexpr grammar genlib_grammar{';', xor_rank::below_and, "!'*&^+|()", false, true, false, true};
constexpr grammar liberty_grammar{'\0', xor_rank::above_and, "!'*&^+|()", true, false, true, true};

/// Parentheses may be nested this deep.
constexpr std::size_t max_nesting = 1000;

/// The characters of a pin's bare name.
constexpr char_set
    name_characters("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_[]<>.:$");

/// @brief Reads an expression up to its terminator. Throws text_error.
/// @param pins  names that come before those that the text brings
expression read_expression(scanner& text, const grammar& format,
                           std::vector<std::string> pins = {});

} // namespace basbdcells
