/// @file
/// @brief From an equation's program to its column.
#pragma once

#include "basbdtt.h"
#include "basbdtt/reading/equation_program.h"

namespace basbdtt {

/// @brief Gives `table` the column and the width of `value`.
///
/// The column is written once, block by block, into the words that the table already has where
/// they suffice. Nothing is changed when an allocation fails.
void evaluate(const equation_program& program, operand value, int width, BOOL_TRUTH_TABLE& table);

} // namespace basbdtt
