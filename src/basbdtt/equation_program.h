/// @file
/// @brief The program between an equation's text and its column: operands and the operations that
/// join them.
///
/// A text of millions of characters becomes a program of as many operations at most, and whatever
/// its shape the evaluation needs few registers: of two operands the one that needs more comes
/// first (Sethi and Ullman, "The generation of optimal code for arithmetic expressions", 1970).
#pragma once

#include "basbdtt.h"
#include "column_words.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

/// Inputs below this one, together, make a pattern of 64 entries that the column repeats.
constexpr int pattern_inputs = 6;

constexpr std::uint64_t all_ones = ~std::uint64_t{0};

/// Why an equation is refused.
enum class refusal : std::uint8_t {
    none,
    unexpected_element, ///< detail: the character
    unbalanced,
    no_element,
    blank_operand,
    bare_input_name,
    input_beyond_width ///< detail: the input
};

/// The value of a piece of an equation. A refused piece stands in the place of its value, so that
/// it is dropped wherever the value would be.
struct operand {
    enum class kind : std::uint8_t {
        pattern, ///< a function of the pattern inputs; payload: its 64 entries
        input,   ///< payload: twice the number, and 1 for the complement
        node,    ///< payload: the index of an operation
        refused  ///< payload: the detail
    };

    kind what = kind::pattern;
    refusal why = refusal::none;
    std::uint64_t payload = 0;

    static operand constant(bool one) { return {kind::pattern, refusal::none, one ? all_ones : 0}; }
    static operand refused(refusal why, std::uint64_t detail = 0)
    {
        return {kind::refused, why, detail};
    }
    static operand of_input(int number)
    {
        const auto place = static_cast<std::size_t>(number);
        return number < pattern_inputs
                   ? operand{kind::pattern, refusal::none, pair_projection_mask[place]}
                   : operand{kind::input, refusal::none, 2 * place};
    }
};

/// The operators in the order of their ranks, the least binding first.
enum class operation : std::uint8_t { disjunction, exclusive, conjunction };
constexpr std::size_t operations = 3;

/// Both operands' entries joined.
inline std::uint64_t apply(operation op, std::uint64_t a, std::uint64_t b)
{
    switch (op) {
    case operation::disjunction:
        return a | b;
    case operation::exclusive:
        return a ^ b;
    case operation::conjunction:
        break;
    }
    return a & b;
}

/// One step of a program that works on a stack of values: it pushes a leaf, or joins the two
/// topmost values and complements the result.
struct equation_step {
    enum class kind : std::uint8_t { pattern, input, join };

    std::uint64_t pattern;
    kind what;
    operation op;
    bool complement; ///< of an input or a join
    std::uint8_t input;
};

/// Values on the stack at any time: no tree of fewer than 2^30 operations needs more.
constexpr std::size_t max_values = 34;

/// @brief Appends the column of `steps` over `width` inputs, at least 6, to the empty `column`.
///
/// Allocates before the first word is written, and not in `column` when that has the capacity.
void write_column(std::vector<equation_step>& steps, int width, std::vector<std::uint32_t>& column);

/// @brief One equation as a tree of operations.
class equation_program {
public:
    /// The value of `left` joined with `right`; a refused operand, the left one first, refuses it.
    operand combine(operation op, const operand& left, const operand& right)
    {
        if (left.what == operand::kind::pattern && right.what == operand::kind::pattern) {
            return {operand::kind::pattern, refusal::none, apply(op, left.payload, right.payload)};
        }
        return join(op, left, right);
    }

    /// The complement of `value`, which is used nowhere else.
    operand complement(operand value);

    /// @brief Gives `table` the column and the width of `result`.
    ///
    /// The column is written once, block by block, into the words that the table already has where
    /// they suffice. Nothing is changed when an allocation fails.
    void evaluate(const operand& result, int width, BOOL_TRUTH_TABLE& table);

private:
    /// An operand of a node in 32 bits: the kind below, payload or place in `patterns` above.
    using reference = std::uint32_t;

    struct node {
        reference left;
        reference right;
        operation op;
        bool complement;
        std::uint8_t registers; ///< that its evaluation needs; at most the logarithm of its size
    };

    static operand::kind kind_of(reference value) { return static_cast<operand::kind>(value & 3U); }
    static std::uint32_t payload_of(reference value) { return value >> 2; }

    operand join(operation op, const operand& left, const operand& right);
    reference refer_to(const operand& value);
    int registers_of(reference value) const;
    equation_step leaf_step(reference value) const;
    std::vector<equation_step> steps_of(const operand& result);

    std::vector<std::uint64_t> patterns;
    std::vector<node> nodes;
};

} // namespace basbdtt
