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

/// What a format of expressions may have; several are joined by `|`.
enum grammar_feature : unsigned {
    digit_constants = 1, ///< 0 and 1
    named_constants = 2, ///< CONST0 and CONST1
    quoted_pins = 4,     ///< a pin may be in quotation marks
    plain_products = 8,  ///< operands side by side are a product
    single_letters = 16  ///< every letter is a pin
};

/// @brief What tells the formats of expressions apart.
///
/// Binding, tightest first: `'` behind an operand, `!` before it; AND; XOR, unless it binds tighter
/// than AND; OR.
struct grammar {
    char terminator; ///< ends the expression and is taken; 0 for the end of the text
    xor_rank exclusive;
    std::string_view signs; ///< the operators and parentheses that the format has
    unsigned features;

    constexpr bool has(grammar_feature feature) const { return (features & feature) != 0; }
};

constexpr grammar genlib_grammar{';', xor_rank::below_and, "!'*&^+|()",
                                 named_constants | plain_products};
constexpr grammar liberty_grammar{'\0', xor_rank::above_and, "!'*&^+|()",
                                  digit_constants | quoted_pins | plain_products};

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
