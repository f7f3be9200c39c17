/// @file
/// @brief The joins of blocks, and the steps that call for them.
#include "block_evaluator.h"
#include "function_clones.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace basbdtt {

namespace {

/// Words that are joined at a time.
using group = word_group<8>::type;
constexpr std::size_t stride = sizeof(group) / sizeof(std::uint64_t);

/// The groups whose word k is all ones where bit k of the index is set.
constexpr auto make_group_masks()
{
    std::array<std::array<std::uint64_t, stride>, std::size_t{1} << stride> masks{};
    for (std::size_t i = 0; i < masks.size(); ++i) {
        for (std::size_t k = 0; k < stride; ++k) {
            masks[i][k] = ((i >> k) & 1U) != 0 ? all_ones : 0;
        }
    }
    return masks;
}
alignas(sizeof(group)) constexpr auto group_masks = make_group_masks();

void load_words(group& words, const std::uint64_t* source)
{
    std::memcpy(&words, source, sizeof words);
}

/// Joins a block in memory and one of which `load` gives a group at a time.
template <typename Load>
inline void join_groups(operation op, const std::uint64_t* a, Load load, std::uint64_t* into,
                        std::size_t count, std::uint64_t complement)
{
    with_operation(op, [=](auto assign) {
        for (std::size_t i = 0; i < count; i += stride) {
            group first;
            group second;
            load_words(first, a + i);
            load(second, i);
            assign(first, second);
            first ^= complement;
            std::memcpy(into + i, &first, sizeof first);
        }
    });
}

/// A group of the words of `from` from word `i` on.
inline void load_words(group& words, const two_words& from, std::size_t i)
{
    load_words(words, group_masks[(from.select >> i) % group_masks.size()].data());
    words = (words & (from.set ^ from.clear)) ^ from.clear;
}

/// Joins two blocks in memory.
BASBDTT_CLONES void join_blocks(operation op, const std::uint64_t* a, const std::uint64_t* b,
                                std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    join_groups(
        op, a, [=](group& words, std::size_t i) { load_words(words, b + i); }, into, count,
        complement);
}

/// Joins a block in memory and one of two words.
BASBDTT_CLONES void join_words(operation op, const std::uint64_t* a, two_words b,
                               std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    join_groups(
        op, a, [=](group& words, std::size_t i) { load_words(words, b, i); }, into, count,
        complement);
}

/// Joins `run` blocks of two words to the block in memory.
BASBDTT_CLONES void join_run(operation op, const two_words* blocks, std::size_t run,
                             std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    with_operation(op, [=](auto assign) {
        for (std::size_t i = 0; i < count; i += stride) {
            group joined;
            load_words(joined, into + i);
            for (std::size_t k = 0; k < run; ++k) {
                group next;
                load_words(next, blocks[k], i);
                assign(joined, next);
            }
            joined ^= complement;
            std::memcpy(into + i, &joined, sizeof joined);
        }
    });
}

void expand(const two_words& words, std::uint64_t* into, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        into[i] = ((words.select >> i) & 1U) != 0 ? words.set : words.clear;
    }
}

} // namespace

block_evaluator::block_evaluator(std::size_t words) : count(std::max(words, stride))
{
    for (std::size_t i = 0; i < max_values; ++i) {
        storage[i] = registers[i].data();
    }
}

const std::uint64_t* block_evaluator::run(const step_list& list, std::size_t begin,
                                          std::size_t block_index)
{
    std::size_t top = 0;
    for (std::size_t i = begin; i < list.steps.size(); ++i) {
        const step& each = list.steps[i];
        if (each.is_join()) {
            --top;
            stack[top - 1] = join(each, top - 1);
        } else {
            stack[top] = run_of(each, &list.leaves[each.leaf], block_index, top);
            ++top;
        }
    }
    return in_memory(stack[0], 0);
}

const std::uint64_t* block_evaluator::in_memory(const block_value& value, std::size_t place)
{
    if (value.memory != nullptr) {
        return value.memory;
    }
    expand(value.words, storage[place], count);
    return storage[place];
}

/// The joined leaves of a run.
block_value block_evaluator::run_of(const step& step, const equation_leaf* leaves,
                                    std::size_t block_index, std::size_t place)
{
    const std::uint64_t complement = step.complement_mask();
    std::uint64_t* into = storage[place];
    two_words uniform = two_words::uniform(neutral(step.op));
    std::array<two_words, 32> others;
    std::size_t other_count = 0;
    bool started = false;
    for (std::uint32_t i = 0; i < step.run; ++i) {
        const two_words next = leaves[i].in_block(block_index);
        if (next.is_uniform()) {
            two_words::join(step.op, uniform, next, uniform);
            continue;
        }
        if (other_count == others.size()) {
            if (!started) {
                std::fill_n(into, count, neutral(step.op));
            }
            started = true;
            join_run(step.op, others.data(), other_count, into, count, 0);
            other_count = 0;
        }
        others[other_count++] = next;
    }
    if (!started && other_count <= 1) {
        if (other_count == 1) {
            two_words::join(step.op, uniform, others[0], uniform);
        }
        return {nullptr, uniform.complemented(complement)};
    }
    if (started) {
        join_words(step.op, into, uniform, into, count, 0);
    } else {
        std::fill_n(into, count, uniform.set);
    }
    join_run(step.op, others.data(), other_count, into, count, complement);
    return {into, {}};
}

/// The values at `place` and above it, joined.
block_value block_evaluator::join(const step& step, std::size_t place)
{
    const std::uint64_t complement = step.complement_mask();
    block_value a = stack[place];
    block_value b = stack[place + 1];
    if (a.memory == nullptr) {
        std::swap(a, b);
    }
    if (a.memory == nullptr) {
        two_words joined{};
        if (two_words::join(step.op, a.words, b.words, joined)) {
            return {nullptr, joined.complemented(complement)};
        }
        a.memory = in_memory(a, place);
    }
    if (b.memory == nullptr && b.words.is_uniform() && is_constant(b.words.set)) {
        const std::uint64_t of_zero = apply(step.op, 0, b.words.set) ^ complement;
        const std::uint64_t of_one = apply(step.op, all_ones, b.words.set) ^ complement;
        if (of_zero == of_one) {
            return {nullptr, two_words::uniform(of_zero)};
        }
        if (of_zero == 0) {
            return keep(a, place);
        }
    }
    std::uint64_t* into = storage[place];
    if (b.memory == nullptr) {
        join_words(step.op, a.memory, b.words, into, count, complement);
    } else {
        join_blocks(step.op, a.memory, b.memory, into, count, complement);
    }
    return {into, {}};
}

/// `value` as it is. Where it lies in the register above, the two exchange their memory.
block_value block_evaluator::keep(const block_value& value, std::size_t place)
{
    if (value.memory == storage[place + 1]) {
        std::swap(storage[place], storage[place + 1]);
    }
    return value;
}

} // namespace basbdtt
