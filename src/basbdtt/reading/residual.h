/// @file
/// @brief What is left of an equation once an input is fixed.
#pragma once

#include "block_evaluator.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

/// @brief Residual programs, from the highest input down, in a fixed amount of memory.
///
/// A part that depends on no input above a block any more is evaluated at once and stands in the
/// program as a block from then on, so that no part is evaluated for blocks in which it is the
/// same.
class residual_programs {
public:
    /// Takes all the memory that it ever needs.
    residual_programs(const equation_program& program, int inputs);

    /// The value for no input fixed yet; once and first.
    operand begin(const operand& value);

    /// Whether an input can be fixed in the newest of the values.
    bool has_room() const { return steps().capacity() - steps().size() >= growth * newest_size; }

private:
};

} // namespace basbdtt
