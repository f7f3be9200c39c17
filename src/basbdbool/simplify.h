/// @file
/// @brief Rewriting of trees in place.
#pragma once

#include "basbdbool.h"
#include "reports.h"

namespace basbdbool {

/// Reduces what is below an operator, and leaves the operator itself alone.
void reduce_operands(BOOL_TNODE* node, later_reports& reports);

/// Moves all complements below the operator `root` to the edges into leaves.
void push_complements(BOOL_TNODE* root, unsigned char is_complemented, later_reports& reports);

/// Whether every operator of the tree is `op`.
bool is_pure(BOOL_TNODE* root, signed char op);

} // namespace basbdbool
