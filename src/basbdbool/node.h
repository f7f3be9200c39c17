/// @file
/// @brief Making, recognising and freeing the nodes of a tree.
#pragma once

#include "basbdbool.h"
#include "ut_fastmem.h"

#include <memory>
#include <utility>

namespace basbdbool {

inline bool is_constant(const BOOL_TNODE& node)
{
    return node.op == BOOL_OP_ONE || node.op == BOOL_OP_ZERO;
}

inline bool is_operator(const BOOL_TNODE* node) { return node != nullptr && !basbd_is_leaf(*node); }

/// @brief Whether `node` is a leaf of `sig`, named or not. A constant's null is no signal.
///
/// The address is compared first, for it seldom matches; that of a signal which the host has freed
/// may be the address of an operator's child by now, so the op code counts, too.
inline bool is_leaf_of(const BOOL_TNODE& node, const TECHMAP_SIG* sig)
{
    return basbd_leaf_signal(node) == sig && sig != nullptr && basbd_is_leaf(node);
}

inline void toggle(unsigned char& flag) { flag ^= 1U; }

/// @brief A new operator without children, or a constant.
///
/// Not by the constructor, which is exported and cannot be inlined.
inline BOOL_TNODE* new_node(signed char op)
{
    auto* const node = static_cast<BOOL_TNODE*>(BOOL_TNODE::fstmem->getnewptr());
    node->op = op;
    node->usage = 0;
    node->lcompl = node->rcompl = 0;
    node->left = node->right = nullptr;
    return node;
}

/// A new unnamed leaf.
inline BOOL_TNODE* new_leaf(TECHMAP_SIG* sig)
{
    BOOL_TNODE* const leaf = new_node(BOOL_OP_SIG);
    leaf->left = reinterpret_cast<BOOL_TNODE*>(sig);
    return leaf;
}

/// A deep copy; a copy of null is reported and is an operator without children.
BOOL_TNODE* new_copy(BOOL_TNODE* src);

/// Frees this one node.
inline void delete_node(BOOL_TNODE* node) noexcept { BOOL_TNODE::fstmem->free(node); }

/// @brief Frees every node of a tree once, however many paths lead to it; null is no tree.
///
/// Counting paths in `usage` goes wrong at 65,536 of them; this counts nothing.
/// @param kept  null, or a tree that may share nodes with this one: those stay
void free_tree(BOOL_TNODE* root, BOOL_TNODE* kept = nullptr) noexcept;

/// Clears `usage` in every node, visiting each once however many paths lead to it.
void unmark_tree(BOOL_TNODE* root) noexcept;

struct node_deleter {
    void operator()(BOOL_TNODE* node) const noexcept { delete_node(node); }
};
struct tree_deleter {
    void operator()(BOOL_TNODE* root) const noexcept { free_tree(root); }
};
/// A node, or a whole tree, that its scope owns until it finds its place.
using owned_node = std::unique_ptr<BOOL_TNODE, node_deleter>;
using owned_tree = std::unique_ptr<BOOL_TNODE, tree_deleter>;

/// Frees a function's tree and gives it another.
inline void replace_tree(BOOL_FUNC& function, owned_tree tree)
{
    free_tree(std::exchange(function.root, tree.release()));
}

} // namespace basbdbool
