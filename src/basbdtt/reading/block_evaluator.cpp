// The joins of blocks, and the steps that call for them.
#include "basbdtt/reading/block_evaluator.h"

#include "basbdtt/column/function_clones.h"
#include "basbdtt/column/word_groups.h"

#include <algorithm>
#include <cstring>

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

inline void load_words(group& words, const std::uint64_t* source)
{
    std::memcpy(&words, source, sizeof words);
}

/// A group of the words of `leaf` from word `i` on.
inline void load_words(group& words, const equation_leaf& leaf, std::size_t i)
{
    load_words(words, group_masks[(leaf.places.select >> i) % group_masks.size()].data());
    words = (words & (leaf.inside ^ leaf.outside)) ^ leaf.outside;
}

/// Joins two blocks in memory.
BASBDTT_CLONES void join_blocks(operation op, const std::uint64_t* a, const std::uint64_t* b,
                                std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    with_operation(op, [=](auto assign) {
        for (std::size_t i = 0; i < count; i += stride) {
            group first;
            group second;
            load_words(first, a + i);
            load_words(second, b + i);
            assign(first, second);
            first ^= complement;
            std::memcpy(into + i, &first, sizeof first);
        }
    });
}

/// Joins leaves and a word to the block `from`, or to one another where that is null.
BASBDTT_CLONES void join_leaves(operation op, const std::uint64_t* from, std::uint64_t word,
                                const equation_leaf* leaves, std::size_t leaf_count,
                                std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    with_operation(op, [=](auto assign) {
        for (std::size_t i = 0; i < count; i += stride) {
            group joined = group{} ^ word;
            if (from != nullptr) {
                group other;
                load_words(other, from + i);
                assign(joined, other);
            }
            for (std::size_t k = 0; k < leaf_count; ++k) {
                group next;
                load_words(next, leaves[k], i);
                assign(joined, next);
            }
            joined ^= complement;
            std::memcpy(into + i, &joined, sizeof joined);
        }
    });
}

constexpr std::uint64_t mask_of(bool complement) { return complement ? all_ones : 0; }

} // namespace

// NOLINTNEXTLINE(*-member-init): the others are written before they are read
block_evaluator::block_evaluator(std::size_t words) : count(std::max(words, stride)) {}

block_evaluator::block_value block_evaluator::run(const std::vector<step>& steps,
                                                  const step_list& value, std::size_t index)
{
    std::size_t above = 0;
    for (std::size_t i = value.first;; i = steps[i].next) {
        const step& each = steps[i];
        switch (each.what) {
        case step::kind::push:
            top = above++;
            stack[top].memory = each.is_block ? each.block : nullptr;
            if (!each.is_block) {
                stack[top].leaf = each.leaf.in_block(index);
            }
            if (each.complement) {
                begin(operation::exclusive);
                end(true, true);
            }
            break;
        case step::kind::add:
            i = add(steps, i, value.last, index);
            break;
        case step::kind::join:
            top = --above - 1;
            join(each);
            break;
        }
        if (i == value.last) {
            return stack[0];
        }
    }
}

const std::uint64_t* block_evaluator::in_memory(const block_value& value)
{
    if (value.memory != nullptr) {
        return value.memory;
    }
    const equation_leaf& leaf = value.leaf;
    join_leaves(operation::disjunction, nullptr, 0, &leaf, 1, registers[0].data(), count, 0);
    return registers[0].data();
}

/// Joins what the steps from `first` on add by one operation to the topmost value. Returns the last
/// of these steps.
std::size_t block_evaluator::add(const std::vector<step>& steps, std::size_t first,
                                 std::size_t last, std::size_t index)
{
    begin(steps[first].op);
    for (std::size_t i = first;; i = steps[i].next) {
        const step& each = steps[i];
        if (each.is_block) {
            put(each.block);
        } else {
            put(each.leaf.in_block(index));
        }
        const auto goes_on = [&](const step& next) {
            return next.what == step::kind::add && next.op == op;
        };
        if (i == last || each.complement || !goes_on(steps[each.next])) {
            end(each.complement, true);
            return i;
        }
    }
}

/// Joins the value above the topmost one to it.
void block_evaluator::join(const step& step)
{
    block_value& value = stack[top];
    const block_value& above = stack[top + 1];
    if (value.memory != nullptr && above.memory != nullptr) {
        std::uint64_t* const into = registers[top].data();
        join_blocks(step.op, value.memory, above.memory, into, count, mask_of(step.complement));
        value.memory = into;
        return;
    }
    begin(step.op);
    if (value.memory == nullptr) {
        value.memory = above.memory;
    }
    const bool is_in_place = above.memory == nullptr;
    if (is_in_place) {
        put(above.leaf);
    }
    end(step.complement, is_in_place);
}

void block_evaluator::begin(operation next_op)
{
    op = next_op;
    uniform = neutral(op);
    leaf_count = 0;
    if (stack[top].memory == nullptr) {
        put(stack[top].leaf);
    }
}

void block_evaluator::put(const equation_leaf& leaf)
{
    if (leaf.is_pattern()) {
        uniform = apply(op, uniform, leaf.outside);
        return;
    }
    if (leaf_count == leaves.size()) {
        store(0);
    }
    leaves[leaf_count++] = leaf;
}

void block_evaluator::put(const std::uint64_t* words)
{
    block_value& value = stack[top];
    if (value.memory == nullptr) {
        value.memory = words;
        return;
    }
    join_blocks(op, value.memory, words, registers[top].data(), count, 0);
    value.memory = registers[top].data();
}

/// @param is_in_place  whether the value may stay in the memory where it is
void block_evaluator::end(bool complement, bool is_in_place)
{
    block_value& value = stack[top];
    if (decides(op, uniform)) {
        value = {nullptr, equation_leaf::pattern(uniform ^ mask_of(complement))};
    } else if (value.memory == nullptr && leaf_count <= 1) {
        value.leaf = equation_leaf::pattern(uniform);
        if (leaf_count == 1) {
            equation_leaf::join(op, leaves[0], value.leaf, value.leaf);
        }
        if (complement) {
            value.leaf.complement();
        }
    } else if (value.memory == nullptr || leaf_count != 0 || uniform != neutral(op) || complement ||
               !is_in_place) {
        store(mask_of(complement));
    }
}

/// Joins what waits to the value, in memory.
void block_evaluator::store(std::uint64_t complement)
{
    std::uint64_t* const into = registers[top].data();
    join_leaves(op, stack[top].memory, uniform, leaves.data(), leaf_count, into, count, complement);
    stack[top].memory = into;
    uniform = neutral(op);
    leaf_count = 0;
}

} // namespace basbdtt
