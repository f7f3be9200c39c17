#include "equation_program.h"

#include <algorithm>
#include <array>
#include <new>

namespace basbdtt {

operand equation_program::join(operation op, const operand& left, const operand& right)
{
    if (left.what == operand::kind::refused) {
        return left;
    }
    if (right.what == operand::kind::refused) {
        return right;
    }
    if (nodes.empty()) {
        constexpr std::size_t common_size = 64;
        nodes.reserve(common_size);
        patterns.reserve(common_size);
    }
    const reference a = refer_to(left);
    const reference b = refer_to(right);
    const int need_a = registers_of(a);
    const int need_b = registers_of(b);
    const int need = std::max({1, need_a, need_b, need_a == need_b ? need_a + 1 : 0});
    nodes.push_back({a, b, op, false, static_cast<std::uint8_t>(need)});
    return {operand::kind::node, refusal::none, nodes.size() - 1};
}

operand equation_program::complement(operand value)
{
    switch (value.what) {
    case operand::kind::pattern:
        value.payload = ~value.payload;
        break;
    case operand::kind::input:
        value.payload ^= 1;
        break;
    case operand::kind::node:
        nodes[value.payload].complement = !nodes[value.payload].complement;
        break;
    case operand::kind::refused:
        break;
    }
    return value;
}

equation_program::reference equation_program::refer_to(const operand& value)
{
    std::uint64_t payload = value.payload;
    if (value.what == operand::kind::pattern) {
        patterns.push_back(value.payload);
        payload = patterns.size() - 1;
    }
    if (payload >= std::uint64_t{1} << 30) {
        throw std::bad_alloc(); // a text of gigabytes: no reference has room for its operations
    }
    return static_cast<reference>(payload << 2) | static_cast<reference>(value.what);
}

int equation_program::registers_of(reference value) const
{
    return kind_of(value) == operand::kind::node ? nodes[payload_of(value)].registers : 0;
}

equation_step equation_program::leaf_step(reference value) const
{
    const std::uint32_t payload = payload_of(value);
    if (kind_of(value) == operand::kind::pattern) {
        return {patterns[payload], equation_step::kind::pattern, {}, false, 0};
    }
    return {0,
            equation_step::kind::input,
            {},
            payload % 2 != 0,
            static_cast<std::uint8_t>(payload / 2)};
}

/// @brief The program of `result`, the needier operand of each node first.
///
/// Written from the back: a node, its easier operand, its needier one. Only needier ones wait, and
/// an easier one needs a register less than its node, so that few places suffice.
std::vector<equation_step> equation_program::steps_of(const operand& result)
{
    std::array<reference, max_values> waiting{};
    std::size_t count = 0;
    waiting[count++] = refer_to(result);
    std::vector<equation_step> steps;
    steps.reserve(2 * nodes.size() + 1);
    while (count != 0) {
        const reference value = waiting[--count];
        if (kind_of(value) != operand::kind::node) {
            steps.push_back(leaf_step(value));
            continue;
        }
        const node& join = nodes[payload_of(value)];
        steps.push_back({0, equation_step::kind::join, join.op, join.complement, 0});
        const bool left_first = registers_of(join.left) >= registers_of(join.right);
        waiting[count++] = left_first ? join.left : join.right;
        waiting[count++] = left_first ? join.right : join.left;
    }
    std::reverse(steps.begin(), steps.end());
    return steps;
}

void equation_program::evaluate(const operand& result, int width, BOOL_TRUTH_TABLE& table)
{
    const std::size_t size = words_for_width(width);
    std::vector<equation_step> steps;
    if (width >= pattern_inputs) {
        steps = steps_of(result);
    }
    std::vector<std::uint32_t> fresh;
    std::vector<std::uint32_t>& column =
        table.value.words.capacity() < size ? fresh : table.value.words;
    fresh.reserve(&column == &fresh ? size : 0);
    column.clear();
    if (width < pattern_inputs) {
        column.push_back(static_cast<std::uint32_t>(result.payload) & last_word_mask(width));
    } else {
        write_column(steps, width, column);
    }
    if (&column == &fresh) {
        table.value.words.swap(fresh);
    }
    table.value.bit_count = std::int32_t{1} << width;
    table.width = static_cast<signed char>(width);
}

} // namespace basbdtt
