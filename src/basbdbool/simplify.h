/// @file
/// @brief Rewriting of trees in place.
#pragma once

#include "basbdbool.h"
#include "reports.h"

/// Reduces what is below an operator, and leaves the operator itself alone.
void reduce_operands(BOOL_TNODE* node, LATER_REPORTS& reports);

/// Moves all complements below the operator `root` to the edges into leaves.
void push_complements(BOOL_TNODE* root, unsigned char is_complemented, LATER_REPORTS& reports);

/// Whether every operator of the tree is `op`.
bool is_pure(BOOL_TNODE* root, signed char op);
