/// @file
/// @brief Orders the steps of an equation's program, and fixes inputs in them.
#include "equation_steps.h"

#include <algorithm>
#include <array>
#include <utility>

namespace basbdtt {

namespace {

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

} // namespace

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

void specialise(step_list& list, std::size_t begin, std::size_t end, int place, bool one)
{
    specialiser(list, place, one).run(begin, end);
}

} // namespace basbdtt
