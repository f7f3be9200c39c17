/// @file
/// @brief Edits of the leaves of one signal.
#pragma once

#include "node.h"
#include "reports.h"

namespace basbdbool {

/// Adds a leaf of `sig` under the operator `node`, which must be where the right spine ends.
inline void append_leaf(BOOL_TNODE* node, TECHMAP_SIG* sig, unsigned char iscompl)
{
    const unsigned char flag = iscompl != 0 ? 1 : 0;
    if (node->left == nullptr) {
        node->left = new_leaf(sig);
        node->lcompl ^= flag;
        return;
    }
    if (node->right == nullptr) {
        node->right = new_leaf(sig);
        node->rcompl ^= flag;
        return;
    }
    // The leaf on the right moves to the left of a new operator, and its complement with it.
    owned_node lower(new_node(node->op));
    lower->right = new_leaf(sig);
    lower->rcompl = flag;
    lower->left = node->right;
    lower->lcompl = std::exchange(node->rcompl, static_cast<unsigned char>(0));
    node->right = lower.release();
}

/// Whether the right spine ends at the operator `node`: the next signal is added there.
inline bool ends_spine(const BOOL_TNODE& node)
{
    return node.left == nullptr || !is_operator(node.right);
}

/// Where the right spine of the operator `node` ends.
inline BOOL_TNODE* spine_end(BOOL_TNODE* node)
{
    while (!ends_spine(*node)) {
        node = node->right;
    }
    return node;
}

/// Makes a leaf of `sig` the constant `op`; leaves other leaves alone.
inline void fix_leaf(BOOL_TNODE& leaf, const TECHMAP_SIG* sig, BOOL_OP op)
{
    if (is_leaf_of(leaf, sig)) {
        leaf.op = op;
        leaf.left = nullptr;
    }
}

/// A deep copy; a copy of null is reported and has no operands.
owned_tree copy_or_empty(BOOL_TNODE* sub, later_reports& reports);

/// Puts a copy of `sub` in the place of every leaf of `sig` under the operator `root`.
void substitute(BOOL_TNODE* root, const TECHMAP_SIG* sig, BOOL_TNODE* sub, bool is_complemented,
                later_reports& reports);

/// Deletes every leaf of `sig` under the operator `root`.
void remove_signal(BOOL_TNODE* root, const TECHMAP_SIG* sig) noexcept;

} // namespace basbdbool
