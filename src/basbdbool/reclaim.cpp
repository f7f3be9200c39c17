#include "node.h"
#include "tree_path.h"
#include "ut_fastmem.h"

#include <utility>

namespace {

/// Set in `lcompl` of the operators that a walk has been to; never outside of such a walk.
constexpr unsigned char been_here = 0x80;

} // namespace

void unmark_tree(BOOL_TNODE* root) noexcept
{
    // `usage` itself cannot tell where the walk has been, for it may hold anything.
    visit_nodes(root, [](BOOL_TNODE& node) {
        node.usage = 0;
        if (basbd_is_leaf(node) || (node.lcompl & been_here) != 0) {
            return WALK::PAST;
        }
        node.lcompl |= been_here;
        return WALK::BELOW;
    });
    visit_operators(root, [](BOOL_TNODE& node) {
        if ((node.lcompl & been_here) == 0) {
            return WALK::PAST;
        }
        node.lcompl &= static_cast<unsigned char>(~been_here);
        return WALK::BELOW;
    });
}

void BOOL_TNODE::unmarknodes() { unmark_tree(this); }

void BOOL_TNODE::markusage()
{
    visit_nodes(this, [](BOOL_TNODE& node) {
        ++node.usage;
        return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
    });
}

void BOOL_TNODE::reclaim()
{
    UT_FASTMEM& pool = *fstmem;
    visit_nodes(
        this,
        [](BOOL_TNODE& node) {
            --node.usage;
            return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
        },
        [&](BOOL_TNODE* child) {
            if (child->usage == 0) {
                pool.free(child);
            }
        });
}

void free_tree(BOOL_TNODE* root) noexcept
{
    if (root == nullptr) {
        return;
    }
    UT_FASTMEM& pool = *BOOL_TNODE::fstmem;
    // The dying nodes hold the lists themselves, linked by `left`: those with a right child still
    // to come, and those that the walk is done with. None may go back to the pool before the end,
    // for another path may lead to it.
    BOOL_TNODE* unfinished = nullptr;
    BOOL_TNODE* finished = nullptr;
    const auto is_found_first = [](BOOL_TNODE* node) {
        return std::exchange(node->lcompl, been_here) != been_here;
    };
    const auto finish = [&](BOOL_TNODE* node) {
        node->left = finished;
        finished = node;
    };
    for (BOOL_TNODE* node = root; node != nullptr;) {
        BOOL_TNODE* next = nullptr;
        if (is_found_first(node)) {
            // A leaf on the left, the most frequent operand, takes no turn of its own.
            BOOL_TNODE* left = basbd_is_leaf(*node) ? nullptr : node->left;
            if (left != nullptr && basbd_is_leaf(*left)) {
                if (is_found_first(left)) {
                    finish(left);
                }
                left = nullptr;
            }
            next = left != nullptr ? left : node->right;
            if (left != nullptr && node->right != nullptr) {
                node->left = unfinished;
                unfinished = node;
            } else {
                finish(node);
            }
        }
        if (next == nullptr && unfinished != nullptr) {
            BOOL_TNODE* const parent = unfinished;
            unfinished = parent->left;
            next = parent->right;
            finish(parent);
        }
        node = next;
    }
    while (finished != nullptr) {
        BOOL_TNODE* const next = finished->left;
        pool.free(finished);
        finished = next;
    }
}
