/// @file
/// @brief An equation's program in the order of its work.
#pragma once

#include "equation_program.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

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
step_list steps_of(equation_program& program, const operand& result);

/// Fixes the input above `place` blocks: appends what is left of the steps from `begin` to `end` to
/// the same list, which has the capacity.
void specialise(step_list& list, std::size_t begin, std::size_t end, int place, bool one);

} // namespace basbdtt
