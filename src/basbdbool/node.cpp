#include "node.h"

#include "reports.h"
#include "ut_fastmem.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

static_assert(sizeof(BOOL_TNODE) == 24 && offsetof(BOOL_TNODE, op) == 0 &&
                  offsetof(BOOL_TNODE, usage) == 2 && offsetof(BOOL_TNODE, lcompl) == 4 &&
                  offsetof(BOOL_TNODE, rcompl) == 5 && offsetof(BOOL_TNODE, left) == 8 &&
                  offsetof(BOOL_TNODE, right) == 16,
              "hosts rely on the layout of a node record");
static_assert(alignof(BOOL_TNODE) > 1, "walks and copies keep a side in bit 0 of a node's address");

namespace basbdbool {

namespace {

/// @brief Copies a tree, each node before what is below its left and then its right child, without
/// call stack and without memory besides the copy's own nodes.
///
/// Until its right child is copied, an operator's copy has the way back up in `right`: its parent,
/// plus 1 when it is the right child; null where nothing above waits for its right child. Until its
/// left child is copied, its `left` is its source.
class copier {
public:
    explicit copier(BOOL_TNODE* copy) : root(copy), node(copy), pool(*BOOL_TNODE::fstmem) {}
    copier(const copier&) = delete;
    copier& operator=(const copier&) = delete;

    /// If the pool threw, frees what was made below the root.
    ~copier()
    {
        if (!done) {
            while (give_right_child(nullptr)) {
            }
            free_tree(root->left);
            free_tree(root->right);
        }
    }

    /// Copies what is below the operator `src`.
    void copy_operands(BOOL_TNODE* src)
    {
        source = src;
        for (bool left_is_done = false; !done;) {
            if (!left_is_done && is_operator(source->left)) {
                copy_left(source->left);
                continue;
            }
            if (!left_is_done) {
                node->left = copied_leaf(source->left);
            }
            left_is_done = false;
            if (is_operator(source->right)) {
                copy_right(source->right);
                continue;
            }
            left_is_done = give_right_child(copied_leaf(source->right));
            done = !left_is_done;
        }
    }

private:
    BOOL_TNODE* copied_fields(const BOOL_TNODE& src, BOOL_TNODE* left)
    {
        auto* const copy = static_cast<BOOL_TNODE*>(pool.getnewptr());
        copy->op = src.op;
        copy->usage = src.usage;
        copy->lcompl = src.lcompl & 1U;
        copy->rcompl = src.rcompl & 1U;
        copy->left = left;
        copy->right = nullptr;
        return copy;
    }

    BOOL_TNODE* copied_leaf(const BOOL_TNODE* src)
    {
        return src == nullptr ? nullptr : copied_fields(*src, src->left);
    }

    void copy_left(BOOL_TNODE* src)
    {
        BOOL_TNODE* const child = copied_fields(*src, nullptr);
        node->left = source;
        child->right = node;
        node = child;
        source = src;
    }

    void copy_right(BOOL_TNODE* src)
    {
        BOOL_TNODE* const child = copied_fields(*src, nullptr);
        if (node->right == nullptr) {
            node->right = child;
        } else {
            child->right = reinterpret_cast<BOOL_TNODE*>(reinterpret_cast<char*>(node) + 1);
        }
        node = child;
        source = src;
    }

    /// Completes the current copy and goes up to one whose right child is still to come.
    /// @return whether there is one
    bool give_right_child(BOOL_TNODE* right)
    {
        for (;;) {
            auto* const up = reinterpret_cast<char*>(std::exchange(node->right, right));
            if (up == nullptr) {
                return false;
            }
            const auto side = reinterpret_cast<std::uintptr_t>(up) & 1U;
            right = node;
            node = reinterpret_cast<BOOL_TNODE*>(up - side);
            if (side == 0) {
                source = std::exchange(node->left, right);
                return true;
            }
        }
    }

    BOOL_TNODE* root;
    BOOL_TNODE* node;             ///< whose children are being copied
    BOOL_TNODE* source = nullptr; ///< of `node`
    UT_FASTMEM& pool;
    bool done = false;
};

} // namespace

BOOL_TNODE* new_copy(BOOL_TNODE* src) { return new BOOL_TNODE(src); }

} // namespace basbdbool

using namespace basbdbool;

BOOL_TNODE::BOOL_TNODE(char op_code, BOOL_TNODE* left_child, unsigned char lcompl_flag,
                       BOOL_TNODE* right_child, unsigned char rcompl_flag)
    : op(op_code), usage(0), lcompl(lcompl_flag & 1U), rcompl(rcompl_flag & 1U), left(left_child),
      right(right_child)
{
}

BOOL_TNODE::BOOL_TNODE() : BOOL_TNODE(BOOL_OP_AND, nullptr, 0, nullptr, 0) {}

BOOL_TNODE::BOOL_TNODE(char op_code) : BOOL_TNODE(op_code, nullptr, 0, nullptr, 0) {}

BOOL_TNODE::BOOL_TNODE(char op_code, BOOL_TNODE* left_child)
    : BOOL_TNODE(op_code, left_child, 0, nullptr, 0)
{
}

BOOL_TNODE::BOOL_TNODE(char op_code, TECHMAP_SIG* sig)
    : BOOL_TNODE(op_code, reinterpret_cast<BOOL_TNODE*>(sig), 0, nullptr, 0)
{
}

BOOL_TNODE::BOOL_TNODE(BOOL_TNODE* src) : BOOL_TNODE()
{
    if (src == nullptr) {
        report(report_site::copy_of_null_tree);
        return;
    }
    op = src->op;
    usage = src->usage;
    lcompl = src->lcompl & 1U;
    rcompl = src->rcompl & 1U;
    if (basbd_is_leaf(*src)) {
        left = src->left;
    } else {
        copier(this).copy_operands(src);
    }
}

void* BOOL_TNODE::operator new(std::size_t /*size*/) { return fstmem->getnewptr(); }

void BOOL_TNODE::operator delete(void* block)
{
    if (block != nullptr) { // `delete` of null may still call this
        fstmem->free(block);
    }
}
