/// @file
/// @brief The program between an equation's text and its column, and the algebra that builds it.
///
/// A text of millions of characters becomes a program of as many steps at most, and whatever its
/// shape the evaluation needs few values at a time: of two operands the one that needs more comes
/// first (Sethi and Ullman, "The generation of optimal code for arithmetic expressions", 1970).
#pragma once

#include "basbdtt/column/bit_positions.h"
#include "basbdtt/reading/equation_leaf.h"
#include "basbdtt/reading/operand.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

/// Values on the stack at any time: no program of fewer than 2^32 steps needs more.
constexpr std::size_t max_values = 34;

/// One step of a program that works on a stack of values.
struct step {
    enum class kind : std::uint8_t {
        push,
        add, ///< joins a leaf to the topmost value
        join ///< joins the two topmost values
    };

    union {
        equation_leaf leaf;
        const std::uint64_t* block; ///< a block that is evaluated, in place of a leaf
    };
    std::uint32_t next; ///< the step after this one, if it is not the last
    kind what;
    operation op;
    bool complement; ///< of the result; of a push only where it is a block
    bool is_block;

    bool has_leaf() const { return what != kind::join && !is_block; }
};

/// @brief Steps, and all that joins, folds and complements values.
///
/// The steps of a value are a list, so that two values are joined in constant time. A value goes
/// into one other value at most.
class equation_program {
public:
    operand of_input(int number)
    {
        return number < pair_inputs
                   ? operand::pattern(pair_projection_mask[static_cast<std::size_t>(number)])
                   : push(equation_leaf::of_input(number));
    }
    operand of_leaf(const equation_leaf& leaf)
    {
        return leaf.is_pattern() ? operand::pattern(leaf.outside) : push(leaf);
    }
    operand of_block(const std::uint64_t* block);

    /// A refused operand, the left one first, refuses the result.
    operand combine(operation op, operand left, operand right)
    {
        if (left.is_pattern() && right.is_pattern()) {
            return operand::pattern(apply(op, left.entries(), right.entries()));
        }
        return join(op, left, right);
    }
    /// `value` joined with a leaf.
    operand add(operation op, operand value, const equation_leaf& leaf);
    operand complement(operand value)
    {
        return value.is_pattern() ? operand::pattern(~value.entries()) : complement_steps(value);
    }

    std::vector<step> steps;

private:
    step_list append(const step& next);
    operand push(const equation_leaf& leaf);
    operand complement_steps(operand value);
    operand join(operation op, operand a, operand b);
    operand join_pattern(operation op, operand value, std::uint64_t entries);
    bool absorb(operation op, step& host, const equation_leaf& leaf);
    static operand after_absorbing(operation op, step_list value, const equation_leaf& joined);
    step_list add_chain(operation op, step_list value, step_list chain);
    step_list join_values(operation op, step_list a, step_list b);
    void release(step_list value);
};

} // namespace basbdtt
