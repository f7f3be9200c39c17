#include "node.h"

#include "reports.h"
#include "ut_fastmem.h"

#include <cstddef>
#include <new>

static_assert(sizeof(BOOL_TNODE) == 24 && offsetof(BOOL_TNODE, op) == 0 &&
                  offsetof(BOOL_TNODE, usage) == 2 && offsetof(BOOL_TNODE, lcompl) == 4 &&
                  offsetof(BOOL_TNODE, rcompl) == 5 && offsetof(BOOL_TNODE, left) == 8 &&
                  offsetof(BOOL_TNODE, right) == 16,
              "hosts rely on the layout of a node record");

BOOL_TNODE::BOOL_TNODE(char op_, BOOL_TNODE* left_, unsigned char lcompl_, BOOL_TNODE* right_,
                       unsigned char rcompl_)
    : op(op_), usage(0), lcompl(lcompl_), rcompl(rcompl_), left(left_), right(right_)
{
}

BOOL_TNODE::BOOL_TNODE() : BOOL_TNODE(BOOL_OP_AND, nullptr, 0, nullptr, 0) {}

BOOL_TNODE::BOOL_TNODE(char op_) : BOOL_TNODE(op_, nullptr, 0, nullptr, 0) {}

BOOL_TNODE::BOOL_TNODE(char op_, BOOL_TNODE* left_) : BOOL_TNODE(op_, left_, 0, nullptr, 0) {}

BOOL_TNODE::BOOL_TNODE(char op_, TECHMAP_SIG* sig)
    : BOOL_TNODE(op_, reinterpret_cast<BOOL_TNODE*>(sig), 0, nullptr, 0)
{
}

namespace {

/// @brief Copies a tree without call stack and without memory besides the copy's own nodes.
///
/// A copied operator that still lacks its children keeps its source in `left`, and in `right` the
/// next such operator.
class COPIER {
public:
    explicit COPIER(BOOL_TNODE* copy) : root(copy), pool(*BOOL_TNODE::fstmem) {}
    COPIER(const COPIER&) = delete;
    COPIER& operator=(const COPIER&) = delete;

    /// An unfinished copy loses what was made below its root.
    ~COPIER()
    {
        if (done) {
            return;
        }
        while (unfinished != nullptr) {
            BOOL_TNODE* const next = unfinished->right;
            unfinished->left = unfinished->right = nullptr;
            unfinished = next;
        }
        free_tree(root->left);
        free_tree(root->right);
    }

    void copy(BOOL_TNODE* src)
    {
        fill(root, src);
        while (unfinished != nullptr) {
            BOOL_TNODE* const node = unfinished;
            unfinished = node->right;
            fill(node, node->left);
        }
        done = true;
    }

private:
    void fill(BOOL_TNODE* node, BOOL_TNODE* src)
    {
        node->op = src->op;
        node->usage = src->usage;
        node->lcompl = src->lcompl;
        node->rcompl = src->rcompl;
        node->left = node->right = nullptr; // safe to free should the pool give out
        if (basbd_is_leaf(*src)) {
            node->left = src->left;
            return;
        }
        if (src->right != nullptr) {
            node->right = begin(src->right);
        }
        if (src->left != nullptr) {
            node->left = begin(src->left);
        }
    }

    /// A copy of the leaf `src`; for an operator, a node that waits to be filled.
    BOOL_TNODE* begin(BOOL_TNODE* src)
    {
        void* const block = pool.getnewptr();
        if (!basbd_is_leaf(*src)) {
            unfinished = ::new (block) BOOL_TNODE(BOOL_OP_AND, src, 0, unfinished, 0);
            return unfinished;
        }
        auto* leaf =
            ::new (block) BOOL_TNODE(src->op, src->left, src->lcompl, nullptr, src->rcompl);
        leaf->usage = src->usage;
        return leaf;
    }

    BOOL_TNODE* root;
    UT_FASTMEM& pool;
    BOOL_TNODE* unfinished = nullptr;
    bool done = false;
};

} // namespace

BOOL_TNODE::BOOL_TNODE(BOOL_TNODE* src) : BOOL_TNODE()
{
    if (src == nullptr) {
        report(REPORT::COPY_OF_NULL_TREE);
        return;
    }
    COPIER(this).copy(src);
}

void* BOOL_TNODE::operator new(std::size_t /*size*/) { return fstmem->getnewptr(); }

void BOOL_TNODE::operator delete(void* block)
{
    if (block != nullptr) { // a compiler may pass it on from a deletion of null
        fstmem->free(block);
    }
}

BOOL_TNODE* new_leaf(TECHMAP_SIG* sig) { return new BOOL_TNODE(BOOL_OP_SIG, sig); }

BOOL_TNODE* new_node(signed char op) { return new BOOL_TNODE(static_cast<char>(op)); }

BOOL_TNODE* new_copy(BOOL_TNODE* src) { return new BOOL_TNODE(src); }

void delete_node(BOOL_TNODE* node) noexcept { BOOL_TNODE::fstmem->free(node); }
