#include "equation_program.h"

#include <algorithm>
#include <new>

namespace basbdtt {

operand operand::of_input(int number)
{
    const auto place = static_cast<std::size_t>(number);
    if (number < pattern_inputs) {
        return {kind::pattern, refusal::none, pair_projection_mask[place]};
    }
    return {kind::input, refusal::none, 2 * place};
}

operand equation_program::combine(operation op, const operand& left, const operand& right)
{
    if (left.what == operand::kind::refused) {
        return left;
    }
    if (right.what == operand::kind::refused) {
        return right;
    }
    if (left.what == operand::kind::pattern && right.what == operand::kind::pattern) {
        const std::uint64_t a = left.payload;
        const std::uint64_t b = right.payload;
        const std::uint64_t joined = op == operation::conjunction ? a & b
                                     : op == operation::exclusive ? a ^ b
                                                                  : a | b;
        return {operand::kind::pattern, refusal::none, joined};
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
        nodes[value.payload].complement ^= true;
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

} // namespace basbdtt
