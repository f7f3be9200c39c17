/// @file
/// @brief Evaluates an equation's program block by block into the column.
#include "equation_program.h"
#include "function_clones.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace basbdtt {

namespace {

/// A block is 512 bytes, so that all registers in use lie in the first-level cache.
constexpr std::size_t words_per_block = std::size_t{1} << (block_inputs - pair_inputs);
using block = std::array<std::uint64_t, words_per_block>;

/// Longer programs are not specialised: the room for it is set aside before.
constexpr std::size_t max_specialised_leaves = 1024;

/// Values on the stack at any time: no tree of fewer than 2^31 operations needs more.
constexpr std::size_t max_values = 34;

/// One step of a program that works on a stack of values: it pushes a run of leaves, joined, or
/// joins the two topmost values. It may complement the result.
struct step {
    std::uint32_t leaf; ///< the first of a run
    std::uint32_t run;  ///< its length, or 0
    operation op;
    bool complement;

    bool is_join() const { return run == 0; }
    std::uint64_t complement_mask() const { return complement ? all_ones : 0; }
};

/// The steps in the order of their work, and the leaves that they push.
struct step_list {
    std::vector<equation_leaf> leaves;
    std::vector<step> steps;
};

/// @brief The steps to `result`, the needier operand of each node first.
///
/// Written from the back: a node, its easier operand, its needier one. Only needier ones wait, and
/// an easier one needs a register less than its node, so that few places suffice.
step_list steps_of(equation_program& program, const operand& result)
{
    std::array<program_reference, max_values> waiting{};
    std::size_t count = 0;
    waiting[count++] = program.refer_to(result);
    step_list list;
    list.steps.reserve(2 * program.nodes.size() + 1);
    while (count != 0) {
        const program_reference value = waiting[--count];
        if (!value.is_node()) {
            list.steps.push_back({static_cast<std::uint32_t>(value.place()), 1, {}, false});
            continue;
        }
        const equation_node& node = program.nodes[value.place()];
        if (node.run != 0) {
            const auto first = static_cast<std::uint32_t>(node.left.place());
            list.steps.push_back({first, node.run, node.op, node.complement});
            continue;
        }
        list.steps.push_back({0, 0, node.op, node.complement});
        const bool left_first = program.registers_of(node.left) >= program.registers_of(node.right);
        waiting[count++] = left_first ? node.left : node.right;
        waiting[count++] = left_first ? node.right : node.left;
    }
    std::reverse(list.steps.begin(), list.steps.end());
    list.leaves = std::move(program.leaves);
    return list;
}

/// A block in memory, or where `memory` is null one of two words. Leaves are of the second kind, so
/// that the operations between them touch no memory.
struct block_value {
    const std::uint64_t* memory;
    two_words words;
};

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

/// @brief Runs a program on one block of the column at a time.
class block_evaluator {
public:
    explicit block_evaluator(std::size_t words) : count(std::max(words, stride))
    {
        for (std::size_t i = 0; i < max_values; ++i) {
            storage[i] = registers[i].data();
        }
    }

    /// The result of the steps from `begin` on for a block; valid until the next run.
    const std::uint64_t* run(const step_list& list, std::size_t begin, std::size_t block_index)
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

private:
    const std::uint64_t* in_memory(const block_value& value, std::size_t place)
    {
        if (value.memory != nullptr) {
            return value.memory;
        }
        expand(value.words, storage[place], count);
        return storage[place];
    }

    /// The joined leaves of a run.
    block_value run_of(const step& step, const equation_leaf* leaves, std::size_t block_index,
                       std::size_t place)
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
    block_value join(const step& step, std::size_t place)
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
    block_value keep(const block_value& value, std::size_t place)
    {
        if (value.memory == storage[place + 1]) {
            std::swap(storage[place], storage[place + 1]);
        }
        return value;
    }

    std::size_t count; ///< words of a block that the column has, in whole strides
    std::array<block, max_values> registers;
    std::array<std::uint64_t*, max_values> storage;
    std::array<block_value, max_values> stack;
};

/// @brief Fixes the input above `place` blocks: appends what is left of the steps from `begin` to
/// `end` to the same list, which has the capacity.
class specialiser {
public:
    specialiser(step_list& all_steps, int input_place, bool one)
        : list(all_steps), place(input_place), value_of_input(one)
    {
    }

    void run(std::size_t begin, std::size_t end)
    {
        std::size_t top = 0;
        for (std::size_t i = begin; i < end; ++i) {
            const step each = list.steps[i];
            if (each.is_join()) {
                --top;
                join(each, stack[top - 1], stack[top]);
            } else {
                stack[top++] = run_of(each);
            }
        }
        emit_leaf(stack[0]);
    }

private:
    /// A leaf, which has no step yet, or the steps from `start` on.
    struct value {
        std::size_t start;
        equation_leaf leaf;
        bool is_leaf;
    };

    /// What is left of a run: the leaves that differ from place to place, and the joined others.
    value run_of(const step& step)
    {
        const std::size_t start = list.steps.size();
        const std::size_t begin = list.leaves.size();
        std::uint64_t uniform = neutral(step.op);
        for (std::size_t i = step.leaf; i < step.leaf + step.run; ++i) {
            const equation_leaf next = list.leaves[i].fixed(place, value_of_input);
            if (next.is_pattern()) {
                uniform = apply(step.op, uniform, next.block.set);
            } else {
                list.leaves.push_back(next);
            }
        }
        const bool decided = step.op != operation::exclusive && uniform == deciding(step.op);
        if (decided) {
            list.leaves.resize(begin);
        }
        if (decided || list.leaves.size() == begin || uniform != neutral(step.op)) {
            list.leaves.push_back(equation_leaf::pattern(uniform));
        }
        if (list.leaves.size() == begin + 2 &&
            equation_leaf::join(step.op, list.leaves[begin], list.leaves[begin + 1],
                                list.leaves[begin])) {
            list.leaves.pop_back();
        }
        const auto run = static_cast<std::uint32_t>(list.leaves.size() - begin);
        if (run == 1) {
            equation_leaf only = list.leaves.back();
            list.leaves.pop_back();
            if (step.complement) {
                only.complement();
            }
            return {start, only, true};
        }
        list.steps.push_back({static_cast<std::uint32_t>(begin), run, step.op, step.complement});
        return {start, equation_leaf::pattern(0), false};
    }

    /// Joins `b` to `a`.
    void join(const step& step, value& a, value& b)
    {
        if (a.is_leaf && b.is_leaf && equation_leaf::join(step.op, a.leaf, b.leaf, a.leaf)) {
            if (step.complement) {
                a.leaf.complement();
            }
            return;
        }
        if (a.is_leaf && !b.is_leaf) {
            std::swap(a, b); // they start at the same step
        }
        if (b.is_leaf && b.leaf.is_constant()) {
            const std::uint64_t complement = step.complement_mask();
            const std::uint64_t of_zero = apply(step.op, 0, b.leaf.block.set) ^ complement;
            const std::uint64_t of_one = apply(step.op, all_ones, b.leaf.block.set) ^ complement;
            if (of_zero == of_one) {
                list.steps.resize(a.start);
                a = {a.start, equation_leaf::pattern(of_zero), true};
            } else {
                list.steps.back().complement = list.steps.back().complement != (of_zero != 0);
            }
            return;
        }
        emit_leaf(a);
        emit_leaf(b);
        list.steps.push_back(step);
        a.is_leaf = false;
    }

    void emit_leaf(const value& each)
    {
        if (each.is_leaf) {
            list.steps.push_back({static_cast<std::uint32_t>(list.leaves.size()), 1, {}, false});
            list.leaves.push_back(each.leaf);
        }
    }

    step_list& list;
    int place;
    bool value_of_input;
    std::array<value, max_values> stack;
};

/// @brief Writes a column half by half: the program for an input at 0, then for the input at 1,
/// down to blocks.
class column_writer {
public:
    column_writer(step_list& all_steps, int width, std::vector<std::uint32_t>& words)
        : list(all_steps), column(words),
          specialises(all_steps.leaves.size() <= max_specialised_leaves),
          pairs(std::size_t{1} << (std::min(width, block_inputs) - pair_inputs)), evaluator(pairs)
    {
    }

    /// Appends the 2^width entries of the steps from `begin` on.
    void write(std::size_t begin, int width)
    {
        const int place = width - 1 - block_inputs;
        const std::size_t end = list.steps.size();
        if (place < 0) {
            append(evaluator.run(list, begin, column.size() / (2 * pairs)));
        } else if (!uses(begin, place)) {
            write(begin, width - 1);
            repeat(words_for_width(width - 1));
        } else if (!specialises) {
            write(begin, width - 1);
            write(begin, width - 1);
        } else {
            const std::size_t leaves = list.leaves.size();
            for (const bool one : {false, true}) {
                specialiser(list, place, one).run(begin, end);
                write(end, width - 1);
                list.steps.resize(end);
                list.leaves.resize(leaves);
            }
        }
    }

private:
    bool uses(std::size_t begin, int place) const
    {
        return std::any_of(list.steps.begin() + static_cast<std::ptrdiff_t>(begin),
                           list.steps.end(), [=](const step& each) {
                               const equation_leaf* leaf = list.leaves.data() + each.leaf;
                               return std::any_of(leaf, leaf + each.run,
                                                  [=](const equation_leaf& one) {
                                                      return ((one.care >> place) & 1U) != 0;
                                                  });
                           });
    }

    void append(const std::uint64_t* source)
    {
        std::memcpy(buffer.data(), source, pairs * sizeof(*source));
        append_buffer();
    }

    /// Appends the last `size` words once more.
    void repeat(std::size_t size)
    {
        for (std::size_t end = column.size() + size; column.size() < end;) {
            const auto source = column.end() - static_cast<std::ptrdiff_t>(size);
            std::copy_n(source, 2 * pairs, buffer.begin());
            append_buffer();
        }
    }

    void append_buffer()
    {
        column.insert(column.end(), buffer.begin(),
                      buffer.begin() + static_cast<std::ptrdiff_t>(2 * pairs));
    }

    step_list& list;
    std::vector<std::uint32_t>& column;
    bool specialises;
    std::size_t pairs; ///< pairs of words in a block
    block_evaluator evaluator;
    std::array<std::uint32_t, 2 * words_per_block> buffer;
};

/// @brief Appends the column of `list` over `width` inputs, at least 6, to the empty `column`.
///
/// Allocates before the first word is written, and not in `column`, which has the capacity.
void write_column(step_list& list, int width, std::vector<std::uint32_t>& column)
{
    if (list.leaves.size() <= max_specialised_leaves && width > block_inputs) {
        const auto levels = static_cast<std::size_t>(width - block_inputs);
        list.steps.reserve((levels + 1) * list.steps.size());
        list.leaves.reserve((levels + 1) * list.leaves.size());
    }
    column_writer(list, width, column).write(0, width);
}

} // namespace

void evaluate(equation_program& program, const operand& result, int width, BOOL_TRUTH_TABLE& table)
{
    const std::size_t size = words_for_width(width);
    step_list list;
    if (width > pair_inputs) {
        list = steps_of(program, result);
    }
    std::vector<std::uint32_t> fresh;
    const bool has_room = table.value.words.capacity() >= size;
    std::vector<std::uint32_t>& column = has_room ? table.value.words : fresh;
    if (!has_room) {
        fresh.reserve(size);
    }
    if (width > pair_inputs) {
        column.clear();
        write_column(list, width, column);
    } else {
        std::array<std::uint32_t, 2> pair{};
        store_pair(pair.data(), result.payload & first_pair_mask(width));
        column.assign(pair.begin(), pair.begin() + static_cast<std::ptrdiff_t>(size));
    }
    if (!has_room) {
        table.value.words.swap(fresh);
    }
    table.value.bit_count = std::int32_t{1} << width;
    table.width = static_cast<signed char>(width);
}

} // namespace basbdtt
