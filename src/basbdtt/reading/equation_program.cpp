// The algebra of an equation's values.
#include "basbdtt/reading/equation_program.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace basbdtt {

namespace {

constexpr std::uint8_t any_chain = (1U << operations) - 1;

constexpr std::uint8_t chain_of(operation op)
{
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(op));
}

} // namespace

step_list equation_program::append(const step& next)
{
    constexpr std::size_t common_size = 64;
    if (steps.capacity() == 0) {
        steps.reserve(common_size);
    }
    if (steps.size() == std::numeric_limits<std::uint32_t>::max()) {
        throw std::bad_alloc(); // a text of gigabytes: an operand has 32 bits for a step's number
    }
    const auto number = static_cast<std::uint32_t>(steps.size());
    steps.push_back(next);
    return {number, number, next.is_block ? 0 : next.leaf.places.care, 1, any_chain};
}

operand equation_program::push(const equation_leaf& leaf)
{
    return append({{leaf}, 0, step::kind::push, {}, false, false});
}

operand equation_program::of_block(const std::uint64_t* block)
{
    step next = {{}, 0, step::kind::push, {}, false, true};
    next.block = block;
    return append(next);
}

/// Takes a single step back where it is the last one of all.
void equation_program::release(step_list value)
{
    if (value.is_one_step() && value.first + 1 == steps.size()) {
        steps.pop_back();
    }
}

operand equation_program::complement_steps(operand value)
{
    if (value.is_refused()) {
        return value;
    }
    step_list list = value.steps();
    step& last = steps[list.last];
    if (last.what == step::kind::push && !last.is_block) {
        last.leaf.complement();
        return value;
    }
    last.complement = !last.complement;
    list.chain = 0;
    return list;
}

operand equation_program::add(operation op, operand value, const equation_leaf& leaf)
{
    if (leaf.is_pattern()) {
        return combine(op, value, operand::pattern(leaf.outside));
    }
    if (value.is_pattern(neutral(op))) {
        return push(leaf);
    }
    if (value.is_pattern()) {
        equation_leaf joined = {};
        equation_leaf::join(op, equation_leaf::pattern(value.entries()), leaf, joined);
        return of_leaf(joined);
    }
    const step_list list = value.steps();
    if (list.is_one_step() && absorb(op, steps[list.first], leaf)) {
        return after_absorbing(op, list, steps[list.first].leaf);
    }
    return add_chain(op, list, push(leaf).steps());
}

operand equation_program::join(operation op, operand a, operand b)
{
    if (a.is_refused() || b.is_refused()) {
        return a.is_refused() ? a : b;
    }
    if (a.is_pattern() || b.is_pattern()) {
        return a.is_pattern() ? join_pattern(op, b, a.entries()) : join_pattern(op, a, b.entries());
    }
    step_list value = a.steps();
    step_list added = b.steps();
    // A single step may be absorbed, and a chain takes no value of its own on the stack.
    if (value.is_one_step() ? !added.is_one_step() : !added.is_chain(op)) {
        std::swap(value, added);
    }
    if (!added.is_chain(op)) {
        return join_values(op, value, added);
    }
    if (added.is_one_step() && steps[added.first].has_leaf() &&
        absorb(op, steps[value.last], steps[added.first].leaf)) {
        release(added);
        value.inputs |= added.inputs;
        return after_absorbing(op, value, steps[value.last].leaf);
    }
    return add_chain(op, value, added);
}

operand equation_program::join_pattern(operation op, operand value, std::uint64_t entries)
{
    if (is_constant(entries)) {
        return entries == neutral(op)       ? value
               : op == operation::exclusive ? complement(value)
                                            : operand::pattern(entries);
    }
    const step_list list = value.steps();
    const equation_leaf leaf = equation_leaf::pattern(entries);
    // A chain has one leaf for all patterns, so that those that decide are seen.
    const bool has_first = list.is_chain(op) && steps[list.first].has_leaf();
    step& host = steps[has_first ? list.first : list.last];
    return absorb(op, host, leaf) ? after_absorbing(op, list, host.leaf)
                                  : operand(add_chain(op, list, push(leaf).steps()));
}

/// Whether the leaf of a step takes in another one.
bool equation_program::absorb(operation op, step& host, const equation_leaf& leaf)
{
    const bool is_open = host.what == step::kind::push || (host.op == op && !host.complement);
    return is_open && host.has_leaf() && equation_leaf::join(op, host.leaf, leaf, host.leaf);
}

operand equation_program::after_absorbing(operation op, step_list value,
                                          const equation_leaf& joined)
{
    if (joined.is_pattern() && (value.is_one_step() || decides(op, joined.outside))) {
        return operand::pattern(joined.outside);
    }
    if (value.is_one_step()) {
        value.inputs = joined.places.care;
    }
    return value;
}

/// The leaves of `chain` are added to `value` one by one, which takes no value of its own on the
/// stack.
step_list equation_program::add_chain(operation op, step_list value, step_list chain)
{
    step& first = steps[chain.first];
    first.what = step::kind::add;
    first.op = op;
    steps[value.last].next = chain.first;
    return {value.first, chain.last, value.inputs | chain.inputs, value.values,
            static_cast<std::uint8_t>(value.chain & chain_of(op))};
}

step_list equation_program::join_values(operation op, step_list a, step_list b)
{
    if (a.values < b.values) {
        std::swap(a, b);
    }
    const step_list last = append({{}, 0, step::kind::join, op, false, false});
    steps[a.last].next = b.first;
    steps[b.last].next = last.first;
    const auto values = std::max(a.values, static_cast<std::uint8_t>(b.values + 1));
    return {a.first, last.last, a.inputs | b.inputs, values, 0};
}

} // namespace basbdtt
