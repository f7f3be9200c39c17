/// @file
/// @brief What is left of an equation when inputs are fixed.
#pragma once

#include "basbdtt/reading/block_evaluator.h"
#include "basbdtt/reading/equation_program.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

/// @brief A program for each input that is fixed, from the highest one down, until none is left
/// above a block.
///
/// A part that depends on no input above a block any more is evaluated at once and is a block from
/// then on, so that it is not evaluated again for each block in which it is the same.
class residual_program {
public:
    /// Allocates all that it ever uses: what the first input that is fixed needs, and a fixed
    /// amount for all others. Where that runs out, a value is evaluated without fixing more inputs.
    residual_program(std::size_t size, int inputs_above_block, block_evaluator& of_parts);

    /// How much there is, so that what is added later can be taken away again.
    struct state {
        std::size_t steps;
        std::size_t blocks;
    };
    state here() const { return {program.steps.size(), blocks.size()}; }
    void return_to(const state& before);

    const std::vector<step>& steps() const { return program.steps; }

    /// Whether a value of that many steps can be fixed.
    bool has_room_for(std::size_t size) const
    {
        return program.steps.capacity() - program.steps.size() >= growth * size;
    }

    /// What a value of some steps comes to where an input, counted from `block_inputs`, is `one`.
    operand fix(const std::vector<step>& source, const step_list& value, int high_input, bool one);

private:
    /// @brief A value in two parts: what depends on no input above a block, and all else.
    ///
    /// A part that is missing is the neutral constant.
    struct split_value {
        operation op; ///< joins the parts
        operand low;
        operand high;
    };

    /// Steps that are added for each step that is fixed, at most: one for each leaf or block; one
    /// for a new block, which stands for two of these or more; and a join, which makes one value of
    /// two. So there are fewer new blocks, and fewer joins, than leaves and blocks. A program that
    /// outgrew this would throw when the old column is gone.
    static constexpr std::size_t growth = 3;

    static split_value split(operation op, operand value);
    void prepare(operation op, split_value& value);
    operand leaf_of(const step& source, int high_input, bool one);
    void add(const step& source, int high_input, bool one, split_value& value);
    void join(operation op, split_value& value, split_value& other);
    void complement(split_value& value);
    operand united(const split_value& value);
    operand evaluated(operand value);
    bool is_worth_block(const step_list& value) const;

    equation_program program;
    std::vector<block> blocks;
    std::size_t fewest; ///< leaves and blocks of a part that is worth a block
    block_evaluator& evaluator;
    std::array<split_value, max_values> stack;
};

} // namespace basbdtt
