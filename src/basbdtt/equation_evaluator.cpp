/// @file
/// @brief Evaluates an equation's program block by block into the column.
#include "equation_program.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace basbdtt {

namespace {

/// A block is 4,096 entries: 512 bytes, so that all registers in use lie in the first-level cache.
constexpr int block_inputs = 12;
constexpr std::size_t words_per_block = std::size_t{1} << (block_inputs - pattern_inputs);
using block = std::array<std::uint64_t, words_per_block>;

/// No tree of fewer than 2^30 operations needs more.
constexpr std::size_t max_registers = 32;

/// The blocks of the inputs that select a word of a block, each followed by its complement.
constexpr auto make_input_blocks()
{
    std::array<block, std::size_t{2} * (block_inputs - pattern_inputs)> blocks{};
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        for (std::size_t word = 0; word < words_per_block; ++word) {
            const bool set = ((word >> (i / 2)) & 1U) != 0;
            blocks[i][word] = set != (i % 2 != 0) ? all_ones : 0;
        }
    }
    return blocks;
}
constexpr auto input_blocks = make_input_blocks();

/// A block in memory, or where `words` is null a block of one word repeated. Inputs above a block
/// are of the second kind, so that most operations on them touch no memory.
struct block_value {
    const std::uint64_t* words;
    std::uint64_t word;
};

std::uint64_t apply(operation op, std::uint64_t a, std::uint64_t b)
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

/// The loops below are vectorised at -O3 because the operands do not overlap.
template <typename Combine>
void accumulate(std::uint64_t* __restrict into, const std::uint64_t* __restrict other,
                std::size_t count, std::uint64_t complement, Combine combine)
{
    for (std::size_t i = 0; i < count; ++i) {
        into[i] = combine(into[i], other[i]) ^ complement;
    }
}

template <typename Combine>
void accumulate_word(std::uint64_t* into, std::uint64_t other, std::size_t count,
                     std::uint64_t complement, Combine combine)
{
    for (std::size_t i = 0; i < count; ++i) {
        into[i] = combine(into[i], other) ^ complement;
    }
}

/// Calls `work` with the operation as a function, so that each gets a loop of its own.
template <typename Work>
void with_operation(operation op, Work work)
{
    switch (op) {
    case operation::disjunction:
        work([](std::uint64_t a, std::uint64_t b) { return a | b; });
        break;
    case operation::exclusive:
        work([](std::uint64_t a, std::uint64_t b) { return a ^ b; });
        break;
    case operation::conjunction:
        work([](std::uint64_t a, std::uint64_t b) { return a & b; });
        break;
    }
}

} // namespace

/// @brief Runs a program on one block of the column at a time.
class block_evaluator {
public:
    using reference = equation_program::reference;

    block_evaluator(const equation_program& source, reference result,
                    const std::vector<std::uint32_t>& run_order, std::size_t words)
        : program(source), root(result), order(run_order), count(words)
    {
        for (std::size_t i = 0; i < max_registers; ++i) {
            storage[i] = registers[i].data();
        }
    }

    /// The result on a block; valid until the next run.
    block_value run(std::uint64_t block_index)
    {
        if (!is_node(root)) {
            return leaf(root, block_index);
        }
        std::size_t top = 0;
        for (const std::uint32_t index : order) {
            const equation_program::node& node = program.nodes[index];
            const std::size_t popped_left = is_node(node.left) ? 1 : 0;
            const std::size_t popped_right = is_node(node.right) ? 1 : 0;
            top -= popped_left + popped_right;
            const block_value a = popped_left != 0 ? stack[top] : leaf(node.left, block_index);
            const block_value b =
                popped_right != 0 ? stack[top + popped_left] : leaf(node.right, block_index);
            stack[top] = combine(node, a, b, top);
            ++top;
        }
        return stack[0];
    }

private:
    static bool is_node(reference value)
    {
        return equation_program::kind_of(value) == operand::kind::node;
    }

    block_value leaf(reference value, std::uint64_t block_index) const
    {
        const std::size_t payload = equation_program::payload_of(value);
        if (equation_program::kind_of(value) == operand::kind::pattern) {
            return {nullptr, program.patterns[payload]};
        }
        if (payload / 2 < block_inputs) {
            return {input_blocks[payload - std::size_t{2} * pattern_inputs].data(), 0};
        }
        const std::uint64_t bit = (block_index >> (payload / 2 - block_inputs)) & 1U;
        return {nullptr, bit != payload % 2 ? all_ones : 0};
    }

    /// The value of `node` for place `top` of the stack. Which operand came from there and which
    /// from the place above is all the same, for the operations are commutative.
    block_value combine(const equation_program::node& node, block_value a, block_value b,
                        std::size_t top)
    {
        const std::uint64_t complement = node.complement ? all_ones : 0;
        if (a.words == nullptr) {
            std::swap(a, b);
        }
        if (a.words == nullptr) {
            return {nullptr, apply(node.op, a.word, b.word) ^ complement};
        }
        if (b.words == nullptr && (b.word == 0 || b.word == all_ones)) {
            const std::uint64_t of_zero = apply(node.op, 0, b.word) ^ complement;
            const std::uint64_t of_one = apply(node.op, all_ones, b.word) ^ complement;
            if (of_zero == of_one) {
                return {nullptr, of_zero};
            }
            if (of_zero == 0) {
                return keep(a, top);
            }
        }
        std::uint64_t* into = storage[top];
        if (b.words == into) {
            std::swap(a, b);
        }
        if (a.words != into) {
            std::copy_n(a.words, count, into);
        }
        with_operation(node.op, [&](auto op) {
            if (b.words == nullptr) {
                accumulate_word(into, b.word, count, complement, op);
            } else {
                accumulate(into, b.words, count, complement, op);
            }
        });
        return {into, 0};
    }

    /// `value` as it is. Where it lies in the register above, the two exchange their memory.
    block_value keep(block_value value, std::size_t top)
    {
        if (top + 1 < max_registers && value.words == storage[top + 1]) {
            std::swap(storage[top], storage[top + 1]);
        }
        return value;
    }

    const equation_program& program;
    reference root;
    const std::vector<std::uint32_t>& order;
    std::size_t count; ///< words of a block that the column has
    std::array<block, max_registers> registers;
    std::array<std::uint64_t*, max_registers> storage;
    std::array<block_value, max_registers> stack;
};

/// @brief The nodes below `root`, every one after its operands and the needier operand first.
///
/// Written from the back: a node, its easier operand, its needier one. Only needier ones wait, and
/// an easier one needs a register less than its node, so that `max_registers` places suffice.
std::vector<std::uint32_t> equation_program::evaluation_order(reference root) const
{
    std::vector<std::uint32_t> order;
    if (kind_of(root) != operand::kind::node) {
        return order;
    }
    order.reserve(nodes.size());
    std::array<std::uint32_t, max_registers> waiting{};
    std::size_t count = 0;
    waiting[count++] = payload_of(root);
    while (count != 0) {
        const std::uint32_t index = waiting[--count];
        order.push_back(index);
        const node& each = nodes[index];
        const bool left_first = registers_of(each.left) >= registers_of(each.right);
        for (const reference value :
             {left_first ? each.left : each.right, left_first ? each.right : each.left}) {
            if (kind_of(value) == operand::kind::node) {
                waiting[count++] = payload_of(value);
            }
        }
    }
    std::reverse(order.begin(), order.end());
    return order;
}

/// The highest input that the result depends on by its text, the pattern inputs taken as one.
int equation_program::highest_input(reference root, const std::vector<std::uint32_t>& order) const
{
    int highest = pattern_inputs - 1;
    const auto look_at = [&](reference value) {
        if (kind_of(value) == operand::kind::input) {
            highest = std::max(highest, static_cast<int>(payload_of(value) / 2));
        }
    };
    look_at(root);
    for (const std::uint32_t index : order) {
        look_at(nodes[index].left);
        look_at(nodes[index].right);
    }
    return highest;
}

namespace {

/// @brief Writes a column block by block, in memory reserved before.
class column_writer {
public:
    column_writer(std::vector<std::uint32_t>& words, std::size_t pairs)
        : column(words), size(2 * pairs)
    {
        column.clear();
    }

    void append(const block_value& value)
    {
        block filled;
        if (value.words == nullptr) {
            std::fill_n(filled.begin(), size / 2, value.word);
        }
        const std::uint64_t* source = value.words == nullptr ? filled.data() : value.words;
        static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the low word of a pair is first");
        std::memcpy(buffer.data(), source, size * sizeof(std::uint32_t));
        append_buffer();
    }

    /// Repeats the column written so far, which is whole blocks, `times` times in all.
    void repeat(std::size_t times)
    {
        const std::size_t period = column.size();
        for (const std::size_t end = period * times; column.size() < end;) {
            std::copy_n(column.end() - static_cast<std::ptrdiff_t>(period), size, buffer.begin());
            append_buffer();
        }
    }

private:
    void append_buffer()
    {
        column.insert(column.end(), buffer.begin(),
                      buffer.begin() + static_cast<std::ptrdiff_t>(size));
    }

    std::vector<std::uint32_t>& column;
    std::size_t size; ///< words of a block that the column has
    std::array<std::uint32_t, 2 * words_per_block> buffer;
};

} // namespace

void equation_program::evaluate(const operand& result, int width, BOOL_TRUTH_TABLE& table)
{
    const reference root = refer_to(result);
    const std::vector<std::uint32_t> order = evaluation_order(root);
    const std::size_t size = words_for_width(width);
    if (table.value.words.capacity() < size) {
        std::vector<std::uint32_t> fresh;
        fresh.reserve(size);
        table.value.words.swap(fresh);
    }
    // Everything is allocated: from here on nothing fails.
    if (width < pattern_inputs) {
        const auto word = static_cast<std::uint32_t>(result.payload);
        table.value.words.assign(1, word & last_word_mask(width));
    } else {
        const int inputs_in_block = std::min(width, block_inputs);
        const int inputs_used = std::max(highest_input(root, order) + 1, inputs_in_block);
        const std::size_t pairs = std::size_t{1} << (inputs_in_block - pattern_inputs);
        block_evaluator evaluator(*this, root, order, pairs);
        column_writer writer(table.value.words, pairs);
        for (std::size_t i = 0; i < std::size_t{1} << (inputs_used - inputs_in_block); ++i) {
            writer.append(evaluator.run(i));
        }
        writer.repeat(std::size_t{1} << (width - inputs_used));
    }
    table.value.bit_count = std::int32_t{1} << width;
    table.width = static_cast<signed char>(width);
}

} // namespace basbdtt
