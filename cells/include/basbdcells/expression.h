/// @file
/// @brief A function as a cell library or a user writes it.
#pragma once

#include "basbdtt.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace basbdcells {

/// @addtogroup cells Cell libraries
/// @{

/// The most inputs of a function: an external equation names its inputs by letters.
constexpr std::size_t max_inputs = 26;

/// One step of an expression: pushes an operand or replaces the topmost by their combination.
enum class step_kind { zero, one, pin, complement, conjunction, exclusive, disjunction };

/// A step, and its pin when it has one.
struct step {
    step_kind kind;      ///< what it does
    std::size_t pin = 0; ///< index into `expression::pins`, in a step of kind `pin`
};

/// @brief An expression as a program for a stack of operands, in postfix order.
///
///     !(a*b)+c     steps  a b * ! c +     pins  a b c
///
/// An expression without steps stands for no function.
struct expression {
    std::vector<std::string> pins; ///< in the order in which the text first names them
    std::vector<step> steps;       ///< none, or as many as leave one value on the stack
};

/// @brief Runs an expression that has steps. `operand(step)` makes the value of a pin or a
/// constant, `complement(value)` and `combine(kind, left, right)` change `value` or `left` in
/// place.
template <typename operand_maker, typename complement_maker, typename combiner>
auto evaluate(const expression& source, operand_maker operand, complement_maker complement,
              combiner combine)
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

/// @brief The truth table of an expression: pin i is input i.
///
/// An expression without pins gets a table of one input, on which it does not depend.
/// @param source  has steps and at most `max_inputs` pins
BASBD_API BOOL_TRUTH_TABLE table_of(const expression& source);

/// @}

} // namespace basbdcells
