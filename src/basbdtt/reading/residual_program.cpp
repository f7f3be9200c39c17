// Fixes inputs in the program of an equation.
#include "basbdtt/reading/residual_program.h"

#include <algorithm>

namespace basbdtt {

namespace {

/// Bytes that the steps may take beside the column, and as many the blocks.
constexpr std::size_t budget = std::size_t{1} << 19U;
constexpr std::size_t most_steps = budget / sizeof(step);
constexpr std::size_t most_blocks = budget / sizeof(block);

} // namespace

// NOLINTNEXTLINE(*-member-init): the stack is written before it is read
residual_program::residual_program(std::size_t size, int inputs_above_block,
                                   block_evaluator& of_parts)
    : fewest(1 + std::max<std::size_t>(1, (size + most_blocks - 1) / most_blocks)),
      evaluator(of_parts)
{
    const auto levels = static_cast<std::size_t>(inputs_above_block);
    program.steps.reserve(growth * size + std::min(levels * size, most_steps));
    // Each block takes `fewest` - 1 leaves away at least, so that there is room for all.
    blocks.reserve(std::min(size, most_blocks));
}

void residual_program::return_to(const state& before)
{
    program.steps.erase(program.steps.begin() + static_cast<std::ptrdiff_t>(before.steps),
                        program.steps.end());
    blocks.resize(before.blocks);
}

operand residual_program::fix(const std::vector<step>& source, const step_list& value,
                              int high_input, bool one)
{
    std::size_t count = 0;
    for (std::size_t i = value.first;; i = source[i].next) {
        const step& each = source[i];
        switch (each.what) {
        case step::kind::push:
            // What comes next is likely to join something to the value.
            stack[count++] = split(i == value.last ? operation() : source[each.next].op,
                                   leaf_of(each, high_input, one));
            break;
        case step::kind::add:
            add(each, high_input, one, stack[count - 1]);
            break;
        case step::kind::join:
            --count;
            join(each.op, stack[count - 1], stack[count]);
            break;
        }
        if (each.complement) {
            complement(stack[count - 1]);
        }
        if (i == value.last) {
            return united(stack[0]);
        }
    }
}

operand residual_program::leaf_of(const step& source, int high_input, bool one)
{
    return source.is_block ? program.of_block(source.block)
                           : program.of_leaf(source.leaf.fixed(high_input, one));
}

void residual_program::add(const step& source, int high_input, bool one, split_value& value)
{
    prepare(source.op, value);
    if (source.is_block) {
        value.low = program.combine(source.op, value.low, program.of_block(source.block));
        return;
    }
    const equation_leaf leaf = source.leaf.fixed(high_input, one);
    operand& part = leaf.places.care == 0 ? value.low : value.high;
    part = program.add(source.op, part, leaf);
}

residual_program::split_value residual_program::split(operation op, operand value)
{
    const operand missing = operand::pattern(neutral(op));
    return value.inputs() == 0 ? split_value{op, value, missing} : split_value{op, missing, value};
}

/// Lets other values be joined to each part by `op`.
void residual_program::prepare(operation op, split_value& value)
{
    if (value.op != op) {
        value = split(op, united(value));
    }
}

void residual_program::join(operation op, split_value& value, split_value& other)
{
    prepare(op, value);
    prepare(op, other);
    value.low = program.combine(op, value.low, other.low);
    value.high = program.combine(op, value.high, other.high);
}

void residual_program::complement(split_value& value)
{
    value = split(value.op, program.complement(united(value)));
}

operand residual_program::united(const split_value& value)
{
    if (value.high.is_pattern()) {
        return program.combine(value.op, value.low, value.high);
    }
    return program.combine(value.op, evaluated(value.low), value.high);
}

/// A value without inputs above a block as a block, if it is long enough.
operand residual_program::evaluated(operand value)
{
    if (value.is_pattern() || !is_worth_block(value.steps())) {
        return value;
    }
    const block_evaluator::block_value result = evaluator.run(program.steps, value.steps(), 0);
    if (result.memory == nullptr) {
        return program.of_leaf(result.leaf);
    }
    if (std::equal(result.memory + 1, result.memory + words_per_block, result.memory)) {
        return operand::pattern(result.memory[0]);
    }
    blocks.emplace_back();
    std::copy_n(result.memory, words_per_block, blocks.back().begin());
    return program.of_block(blocks.back().data());
}

bool residual_program::is_worth_block(const step_list& value) const
{
    std::size_t count = 0;
    for (std::size_t i = value.first;; i = program.steps[i].next) {
        count += program.steps[i].what != step::kind::join ? 1 : 0;
        if (count == fewest || i == value.last) {
            return count == fewest;
        }
    }
}

} // namespace basbdtt
