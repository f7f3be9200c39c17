/// @file
/// @brief The function of a cell as its library writes it.
#pragma once

#include "scanner.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace cellfn {

/// One step of an expression: pushes an operand or replaces the topmost by their combination.
enum class step_kind { zero, one, pin, complement, conjunction, exclusive, disjunction };

struct step {
    step_kind kind;
    std::size_t pin = 0; ///< index into `expression::pins`, in a step of kind `pin`
};

/// @brief An expression as a program for a stack of operands, in postfix order.
///
///     !(a*b)+c     steps  a b * ! c +     pins  a b c
struct expression {
    std::vector<std::string> pins; ///< in the order in which the text first names them
    std::vector<step> steps;
};

/// Parentheses may be nested this deep.
constexpr std::size_t max_nesting = 1000;

/// @brief Reads an expression up to the ";" that ends it, which is taken too.
///
/// Binding, tightest first: `'` behind an operand, `!` before it; `*`, `&` or nothing; `^`;
/// `+` or `|`. Throws text_error.
/// @param pins  names that come before those that the text brings
expression read_expression(scanner& text, std::vector<std::string> pins = {});

/// @brief Runs an expression. `operand(step)` makes the value of a pin or a constant,
/// `complement(value)` and `combine(kind, left, right)` change `value` or `left` in place.
template <class Operand, class Complement, class Combine>
auto evaluate(const expression& source, Operand operand, Complement complement, Combine combine)
{
    std::vector<decltype(operand(step{}))> stack;
    for (const step& each : source.steps) {
        switch (each.kind) {
        case step_kind::zero:
        case step_kind::one:
        case step_kind::pin:
            stack.push_back(operand(each));
            break;
        case step_kind::complement:
            complement(stack.back());
            break;
        default: {
            const auto right = std::move(stack.back());
            stack.pop_back();
            combine(each.kind, stack.back(), right);
        }
        }
    }
    return std::move(stack.back());
}

} // namespace cellfn
