/// @file
/// @brief The program between an equation's text and its column: operands and the operations that
/// join them.
///
/// A text of millions of characters becomes a program of as many operations at most, and whatever
/// its shape the evaluation needs few registers: of two operands the one that needs more comes
/// first (Sethi and Ullman, "The generation of optimal code for arithmetic expressions", 1970).
#pragma once

#include "basbdtt.h"
#include "equation_leaf.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

/// Why an equation is refused.
enum class refusal : std::uint8_t {
    unexpected_element, ///< detail: the character
    unbalanced,
    no_element,
    blank_operand,
    bare_input_name,
    input_beyond_width, ///< detail: the input
    letter_beyond_width ///< the same, of an equation that names inputs by letters
};

/// The value of a piece of an equation. A refused piece stands in the place of its value, so that
/// it is dropped wherever the value would be.
struct operand {
    enum class kind : std::uint8_t {
        pattern, ///< a function of the lowest inputs; payload: its 64 entries
        leaf,    ///< payload: its place in the program
        node,    ///< payload: its place in the program
        refused  ///< payload: the detail
    };

    kind what = kind::pattern;
    refusal why = {}; ///< of a refused piece
    std::uint64_t payload = 0;

    static constexpr operand pattern(std::uint64_t entries) { return {kind::pattern, {}, entries}; }
    static constexpr operand constant(bool one) { return pattern(one ? all_ones : 0); }
    static constexpr operand refused(refusal why, std::uint64_t detail = 0)
    {
        return {kind::refused, why, detail};
    }
};

/// A leaf or a node by its place, which lies above the lowest bit.
struct program_reference {
    std::uint32_t bits;

    static program_reference leaf(std::size_t place)
    {
        return {static_cast<std::uint32_t>(place << 1)};
    }
    static program_reference node(std::size_t place) { return {leaf(place).bits | 1U}; }

    bool is_node() const { return (bits & 1U) != 0; }
    std::size_t place() const { return bits >> 1; }
};

/// A run of leaves, or two operands, joined by one operation.
struct equation_node {
    program_reference left; ///< of a run: its first leaf
    program_reference right;
    std::uint32_t run; ///< the length of a run; 0 for two operands
    operation op;
    bool complement;
    std::uint8_t registers; ///< that its evaluation needs; at most the logarithm of its size
};

/// @brief One equation as a tree of operations.
class equation_program {
public:
    operand of_input(int number)
    {
        return number < pair_inputs
                   ? operand::pattern(pair_projection_mask[static_cast<std::size_t>(number)])
                   : hold(equation_leaf::of_input(number));
    }

    /// The value of `left` joined with `right`, both used nowhere else; a refused operand, the left
    /// one first, refuses it.
    operand combine(operation op, const operand& left, const operand& right)
    {
        if (left.what == operand::kind::pattern && right.what == operand::kind::pattern) {
            return operand::pattern(apply(op, left.payload, right.payload));
        }
        return join(op, left, right);
    }

    /// The complement of `value`, which is used nowhere else.
    operand complement(operand value);

    /// The place of `value` in `leaves` or in `nodes`.
    program_reference refer_to(const operand& value);
    int registers_of(program_reference value) const
    {
        return value.is_node() ? nodes[value.place()].registers : 0;
    }

    std::vector<equation_leaf> leaves;
    std::vector<equation_node> nodes;

private:
    /// Leaves that stand side by side.
    struct leaf_range {
        std::size_t begin;
        std::size_t end;
    };

    operand join(operation op, const operand& left, const operand& right);
    operand add(const equation_node& node);
    leaf_range leaves_under(operation op, program_reference value) const;
    operand hold(const equation_leaf& leaf);
    equation_leaf leaf_of(const operand& value) const;
    void release(const operand& value);
};

/// @brief Gives `table` the column and the width of `result`.
///
/// The column is written once, block by block, into the words that the table already has where
/// they suffice. Nothing is changed when an allocation fails.
void evaluate(equation_program& program, const operand& result, int width, BOOL_TRUTH_TABLE& table);

} // namespace basbdtt
