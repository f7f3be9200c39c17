/// @file
/// @brief Rewriting of trees in place.
#pragma once

#include "basbdbool.h"
#include "reports.h"

/// @brief Reduces the tree below the operator `root`.
/// @return what stands for it now: `root`, or another node and `root` is left to be deleted alone
BOOL_TNODE* reduce_tree(BOOL_TNODE* root, LATER_REPORTS& reports);

/// Moves all complements below the operator `root` to the edges into leaves.
void push_complements(BOOL_TNODE* root, unsigned char is_complemented);

/// Whether every operator of the tree is `op`.
bool is_pure(BOOL_TNODE* root, signed char op);

/// @brief Takes back the complement that a signal leaf carries itself once it was complemented.
///
/// A leaf has no operand whose edge could be flagged, so for the moment its own `lcompl` is used.
/// @return whether the edge into the node that replaced another must be toggled
bool take_own_complement(BOOL_TNODE& replacement);
