/// @file
/// @brief Builds an equation's program, folding operands into leaves where it can.
#include "equation_program.h"

#include <algorithm>
#include <new>

namespace basbdtt {

operand equation_program::join(operation op, const operand& left, const operand& right)
{
    for (const operand* each : {&left, &right}) {
        if (each->what == operand::kind::refused) {
            return *each;
        }
    }
    if (left.what != operand::kind::node && right.what != operand::kind::node) {
        equation_leaf joined{};
        if (equation_leaf::join(op, leaf_of(left), leaf_of(right), joined)) {
            release(right);
            release(left);
            return hold(joined);
        }
    }
    const program_reference a = refer_to(left);
    const program_reference b = refer_to(right);
    const leaf_range of_a = leaves_under(op, a);
    const leaf_range of_b = leaves_under(op, b);
    const bool are_runs = of_a.end != 0 && of_b.end != 0;
    if (are_runs && (of_a.end == of_b.begin || of_b.end == of_a.begin)) {
        const std::size_t begin = std::min(of_a.begin, of_b.begin);
        const std::size_t length = std::max(of_a.end, of_b.end) - begin;
        const equation_node run = {
            program_reference::leaf(begin), {}, static_cast<std::uint32_t>(length), op, false, 1};
        if (a.is_node()) {
            nodes[a.place()] = run;
            return left;
        }
        return add(run);
    }
    const int need_a = registers_of(a);
    const int need_b = registers_of(b);
    const int need = need_a == need_b ? need_a + 1 : std::max(need_a, need_b);
    return add({a, b, 0, op, false, static_cast<std::uint8_t>(need)});
}

operand equation_program::add(const equation_node& node)
{
    nodes.push_back(node);
    return {operand::kind::node, {}, nodes.size() - 1};
}

/// The leaves that `value` joins by `op`; none, from 0 to 0, where it is anything else.
equation_program::leaf_range equation_program::leaves_under(operation op,
                                                            program_reference value) const
{
    if (!value.is_node()) {
        return {value.place(), value.place() + 1};
    }
    const equation_node& node = nodes[value.place()];
    if (node.run == 0 || node.op != op || node.complement) {
        return {0, 0};
    }
    return {node.left.place(), node.left.place() + node.run};
}

operand equation_program::complement(operand value)
{
    switch (value.what) {
    case operand::kind::pattern:
        value.payload = ~value.payload;
        break;
    case operand::kind::leaf:
        leaves[value.payload].complement();
        break;
    case operand::kind::node:
        nodes[value.payload].complement = !nodes[value.payload].complement;
        break;
    case operand::kind::refused:
        break;
    }
    return value;
}

operand equation_program::hold(const equation_leaf& leaf)
{
    if (leaf.is_pattern()) {
        return operand::pattern(leaf.block.set);
    }
    if (leaves.empty()) {
        constexpr std::size_t common_size = 64;
        leaves.reserve(common_size);
        nodes.reserve(common_size);
    }
    leaves.push_back(leaf);
    return {operand::kind::leaf, {}, leaves.size() - 1};
}

equation_leaf equation_program::leaf_of(const operand& value) const
{
    return value.what == operand::kind::pattern ? equation_leaf::pattern(value.payload)
                                                : leaves[value.payload];
}

/// Gives back the place of a leaf, as far as it is the last one.
void equation_program::release(const operand& value)
{
    if (value.what == operand::kind::leaf && value.payload + 1 == leaves.size()) {
        leaves.pop_back();
    }
}

program_reference equation_program::refer_to(const operand& value)
{
    std::uint64_t place = value.payload;
    if (value.what == operand::kind::pattern) {
        leaves.push_back(leaf_of(value));
        place = leaves.size() - 1;
    }
    if (place >= std::uint64_t{1} << 31) {
        throw std::bad_alloc(); // a text of gigabytes: no reference has room for its operations
    }
    const bool is_node = value.what == operand::kind::node;
    return is_node ? program_reference::node(place) : program_reference::leaf(place);
}

} // namespace basbdtt
