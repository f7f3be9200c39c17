#include "signal_edits.h"

#include "names.h"
#include "reports.h"
#include "tree_path.h"

#include <utility>

namespace {

/// Leaves that leave their tree, each once however many edges lead to it: linked by `right`, which
/// is null in every other leaf; the first one links to itself.
class DOOMED_LEAVES {
public:
    DOOMED_LEAVES() = default;
    DOOMED_LEAVES(const DOOMED_LEAVES&) = delete;
    DOOMED_LEAVES& operator=(const DOOMED_LEAVES&) = delete;
    ~DOOMED_LEAVES()
    {
        while (last != nullptr) {
            BOOL_TNODE* const next = last->right == last ? nullptr : last->right;
            delete_node(last);
            last = next;
        }
    }
    void add(BOOL_TNODE* leaf)
    {
        if (leaf->right == nullptr) {
            leaf->right = last == nullptr ? leaf : last;
            last = leaf;
        }
    }

private:
    BOOL_TNODE* last = nullptr;
};

/// Calls `edit(child, flag)` for each edge from `node` into a leaf of `sig`.
template <typename EDIT>
void edit_edges(BOOL_TNODE& node, const TECHMAP_SIG* sig, EDIT edit)
{
    if (node.left != nullptr && is_leaf_of(*node.left, sig)) {
        edit(node.left, node.lcompl);
    }
    if (node.right != nullptr && is_leaf_of(*node.right, sig)) {
        edit(node.right, node.rcompl);
    }
}

/// Whether an operator has two operands, the left one a leaf.
bool has_leaf_before_right(const BOOL_TNODE& node)
{
    return !basbd_is_leaf(node) && node.left != nullptr && node.right != nullptr &&
           basbd_is_leaf(*node.left);
}

/// Leaves `usage` 0 throughout a tree at the end of its scope.
struct UNMARKER {
    explicit UNMARKER(BOOL_TNODE* tree) : root(tree) {}
    UNMARKER(const UNMARKER&) = delete;
    UNMARKER& operator=(const UNMARKER&) = delete;
    ~UNMARKER() { unmark_tree(root); }
    BOOL_TNODE* root;
};

/// `count` copies of a tree, as the left children of a chain of nodes.
OWNED_TREE make_copies(BOOL_TNODE* src, unsigned long count)
{
    OWNED_TREE chain;
    for (; count > 0; --count) {
        OWNED_TREE copy(new_copy(src));
        BOOL_TNODE* const link = new_node(BOOL_OP_AND);
        link->left = copy.release();
        link->right = chain.release();
        chain.reset(link);
    }
    return chain;
}

BOOL_TNODE* take_copy(OWNED_TREE& chain)
{
    const OWNED_NODE link(chain.release());
    chain.reset(link->right);
    return link->left;
}

} // namespace

void append_leaf(BOOL_TNODE* node, TECHMAP_SIG* sig, unsigned char iscompl)
{
    const unsigned char flag = iscompl != 0 ? 1 : 0;
    OWNED_NODE leaf(new_leaf(sig));
    if (node->left == nullptr) {
        node->left = leaf.release();
        node->lcompl ^= flag;
        return;
    }
    if (node->right != nullptr) {
        // The leaf on the right moves to the left of a new operator, and its complement with it.
        BOOL_TNODE* const lower = new_node(node->op);
        lower->left = node->right;
        lower->lcompl = std::exchange(node->rcompl, static_cast<unsigned char>(0));
        node->right = lower;
        node = lower;
    }
    node->right = leaf.release();
    node->rcompl ^= flag;
}

void BOOL_TNODE::addsig(TECHMAP_SIG* sig, unsigned char iscompl)
{
    if (basbd_is_leaf(*this)) {
        return;
    }
    append_leaf(spine_end(this), sig, iscompl);
}

void BOOL_TNODE::setsigvname(TECHMAP_SIG* sig, BOOL_VARNAME v)
{
    unsigned long refused = 0;
    visit_leaves(this, [&](BOOL_TNODE& leaf) {
        if (!is_leaf_of(leaf, sig)) {
            return;
        }
        if (is_name(v)) {
            leaf.op = named_op(v);
        } else {
            ++refused;
        }
    });
    for (; refused > 0; --refused) {
        report(REPORT::NAME_OUT_OF_RANGE);
    }
}

void BOOL_TNODE::setsigto1(TECHMAP_SIG* sig)
{
    visit_leaves(this, [sig](BOOL_TNODE& leaf) { fix_leaf(leaf, sig, BOOL_OP_ONE); });
}

void BOOL_TNODE::setsigto0(TECHMAP_SIG* sig)
{
    visit_leaves(this, [sig](BOOL_TNODE& leaf) { fix_leaf(leaf, sig, BOOL_OP_ZERO); });
}

void BOOL_TNODE::subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2)
{
    visit_leaves(this, [=](BOOL_TNODE& leaf) {
        if (is_leaf_of(leaf, sig2)) {
            leaf.left = reinterpret_cast<BOOL_TNODE*>(sig1);
        }
    });
}

void BOOL_TNODE::complsigintree(TECHMAP_SIG* sig)
{
    unsigned long without_left = 0;
    visit_nodes(this, [&](BOOL_TNODE& node) {
        const bool is_inner_leaf = basbd_is_leaf(node) && &node != this;
        if (is_inner_leaf || node.usage != 0) {
            return WALK::PAST;
        }
        node.usage = 1;
        if (!is_operator(&node) || node.left == nullptr) {
            ++without_left;
            return WALK::PAST;
        }
        edit_edges(node, sig, [](BOOL_TNODE* /*leaf*/, unsigned char& flag) { toggle(flag); });
        return WALK::BELOW;
    });
    for (; without_left > 0; --without_left) {
        report(REPORT::COMPLEMENT_NO_LEFT);
    }
}

void BOOL_TNODE::exchangexy()
{
    visit_nodes(this, [](BOOL_TNODE& node) {
        if (node.usage != 0) {
            return WALK::PAST;
        }
        node.usage = 1;
        if (node.op == named_op(BOOL_VAR_QX)) {
            node.op = named_op(BOOL_VAR_QY);
        } else if (node.op == named_op(BOOL_VAR_QY)) {
            node.op = named_op(BOOL_VAR_QX);
        }
        return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
    });
}

void substitute(BOOL_TNODE* root, const TECHMAP_SIG* sig, BOOL_TNODE* sub, bool is_complemented)
{
    constexpr unsigned short counted = 1;
    constexpr unsigned short replaced = 2;
    unmark_tree(root);
    const UNMARKER unmarker(root); // so that other walks find no marks
    unsigned long count = 0;
    visit_operators(root, [&](BOOL_TNODE& node) {
        if (node.usage == counted) {
            return WALK::PAST;
        }
        node.usage = counted;
        edit_edges(node, sig, [&](BOOL_TNODE* /*leaf*/, unsigned char& /*flag*/) { ++count; });
        return WALK::BELOW;
    });
    // Made before the first edit: `sub` may be a part of this tree, and the pool may give out.
    OWNED_TREE copies = make_copies(sub, count);
    DOOMED_LEAVES doomed;
    visit_operators(root, [&](BOOL_TNODE& node) {
        if (node.usage == replaced) {
            return WALK::PAST;
        }
        node.usage = replaced;
        edit_edges(node, sig, [&](BOOL_TNODE*& child, unsigned char& flag) {
            doomed.add(child);
            child = take_copy(copies);
            child->usage = replaced; // the copies are not searched
            if (is_complemented) {
                toggle(flag);
            }
        });
        return WALK::BELOW;
    });
}

void BOOL_TNODE::subtreeforsig(TECHMAP_SIG* sig, BOOL_TNODE* sub, unsigned char iscompl)
{
    if (basbd_is_leaf(*this)) {
        report(REPORT::SUBSTITUTE_IN_LEAF);
        return;
    }
    substitute(this, sig, sub, iscompl != 0);
}

void remove_signal(BOOL_TNODE* root, const TECHMAP_SIG* sig) noexcept
{
    DOOMED_LEAVES doomed;
    visit_operators(root, [&](BOOL_TNODE& node) {
        edit_edges(node, sig, [&](BOOL_TNODE*& child, unsigned char& /*flag*/) {
            doomed.add(child);
            child = nullptr;
        });
        return WALK::BELOW;
    });
}

void BOOL_TNODE::rmsigfromtree(TECHMAP_SIG* sig)
{
    if (basbd_is_leaf(*this)) {
        report(REPORT::REMOVE_FROM_LEAF);
        return;
    }
    remove_signal(this, sig);
}

BOOL_TNODE* BOOL_TNODE::getsubtreeofsize(unsigned short size)
{
    // Every node that the search passes has one leaf on its left, so one count of what is behind
    // them serves them all.
    unsigned int leaves = 0;
    BOOL_TNODE* end = this;
    for (; has_leaf_before_right(*end); end = end->right) {
        ++leaves;
    }
    if (end == this) {
        return nullptr;
    }
    leaves += end->countleaves();
    for (BOOL_TNODE* node = this; node != end; node = node->right) {
        --leaves;
        if (static_cast<unsigned short>(leaves) == size) {
            return std::exchange(node->right, nullptr);
        }
    }
    return nullptr;
}
