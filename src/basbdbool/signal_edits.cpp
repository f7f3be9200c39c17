#include "signal_edits.h"

#include "names.h"
#include "reports.h"
#include "tree_path.h"

#include <utility>
#include <vector>

namespace basbdbool {

namespace {

/// Leaves that leave their tree, each once however many edges lead to it: linked by `right`, which
/// is null in every other leaf; the last one links to itself. Freed in the order in which they
/// came.
class doomed_leaves {
public:
    doomed_leaves() = default;
    doomed_leaves(const doomed_leaves&) = delete;
    doomed_leaves& operator=(const doomed_leaves&) = delete;
    ~doomed_leaves()
    {
        while (first != nullptr) {
            BOOL_TNODE* const next = first == last ? nullptr : first->right;
            delete_node(std::exchange(first, next));
        }
    }
    void add(BOOL_TNODE* leaf)
    {
        if (leaf->right == nullptr) {
            leaf->right = leaf;
            (first == nullptr ? first : last->right) = leaf;
            last = leaf;
        }
    }

private:
    BOOL_TNODE* first = nullptr;
    BOOL_TNODE* last = nullptr;
};

/// @brief Calls `edit(child, flag)` for each edge into a leaf of `sig`.
/// @param mark  goes into `usage` of operators, which are passed over when they have it already
template <typename edit_function>
void edit_edges(BOOL_TNODE* root, const TECHMAP_SIG* sig, unsigned short mark, edit_function edit)
{
    walk_edges(root, [&](BOOL_TNODE*& child, unsigned char& flag) {
        if (is_operator(child) && child->usage != mark) {
            child->usage = mark;
            return step::below;
        }
        if (child != nullptr && is_leaf_of(*child, sig)) {
            edit(child, flag);
        }
        return step::past;
    });
}

/// Whether an operator has two operands, the left one a leaf.
bool has_leaf_before_right(const BOOL_TNODE& node)
{
    return !basbd_is_leaf(node) && node.left != nullptr && node.right != nullptr &&
           basbd_is_leaf(*node.left);
}

/// Leaves `usage` 0 throughout a tree at the end of its scope.
struct unmarker {
    explicit unmarker(BOOL_TNODE* tree) : root(tree) {}
    unmarker(const unmarker&) = delete;
    unmarker& operator=(const unmarker&) = delete;
    ~unmarker() { unmark_tree(root); }
    BOOL_TNODE* root;
};

} // namespace

owned_tree copy_or_empty(BOOL_TNODE* sub, later_reports& reports)
{
    if (sub != nullptr) {
        return owned_tree(new_copy(sub));
    }
    reports.add(report_site::copy_of_null_tree);
    return owned_tree(new_node(BOOL_OP_AND));
}

void substitute(BOOL_TNODE* root, const TECHMAP_SIG* sig, BOOL_TNODE* sub, bool is_complemented,
                later_reports& reports)
{
    constexpr unsigned short counted = 1;
    constexpr unsigned short replaced = 2;
    unmark_tree(root);
    const unmarker unmarker(root); // so that other walks find no marks
    unsigned long count = 0;
    edit_edges(root, sig, counted, [&](BOOL_TNODE* /*leaf*/, unsigned char /*flag*/) { ++count; });
    // Made before the first edit: `sub` may be a part of this tree, and the pool may give out.
    std::vector<owned_tree> copies(count);
    for (owned_tree& each : copies) {
        each = copy_or_empty(sub, reports);
    }
    doomed_leaves doomed;
    auto copy = copies.begin();
    edit_edges(root, sig, replaced, [&](BOOL_TNODE*& child, unsigned char& flag) {
        doomed.add(child);
        child = (copy++)->release();
        if (is_complemented) {
            toggle(flag);
        }
    });
}

void remove_signal(BOOL_TNODE* root, const TECHMAP_SIG* sig) noexcept
{
    doomed_leaves doomed;
    walk_edges<branch::right>(root, [&](BOOL_TNODE*& child, unsigned char /*flag*/) {
        if (is_operator(child)) {
            return step::below;
        }
        if (child != nullptr && is_leaf_of(*child, sig)) {
            doomed.add(std::exchange(child, nullptr));
        }
        return step::past;
    });
}

} // namespace basbdbool

using namespace basbdbool;

void BOOL_TNODE::addsig(TECHMAP_SIG* sig, unsigned char iscompl)
{
    if (basbd_is_leaf(*this)) {
        return;
    }
    append_leaf(spine_end(this), sig, iscompl);
}

void BOOL_TNODE::setsigvname(TECHMAP_SIG* sig, BOOL_VARNAME v)
{
    later_reports reports;
    visit_leaves(this, [&](BOOL_TNODE& leaf) {
        if (!is_leaf_of(leaf, sig)) {
            return;
        }
        if (is_name(v)) {
            leaf.op = named_op(v);
        } else {
            reports.add(report_site::name_out_of_range);
        }
    });
    reports.send();
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
    later_reports reports;
    visit_nodes(this, [&](BOOL_TNODE& node) {
        const bool is_inner_leaf = basbd_is_leaf(node) && &node != this;
        if (is_inner_leaf || node.usage != 0) {
            return step::past;
        }
        node.usage = 1;
        if (!is_operator(&node) || node.left == nullptr) {
            reports.add(report_site::complement_no_left);
            return step::past;
        }
        if (is_leaf_of(*node.left, sig)) {
            toggle(node.lcompl);
        }
        if (node.right != nullptr && is_leaf_of(*node.right, sig)) {
            toggle(node.rcompl);
        }
        return step::below;
    });
    reports.send();
}

void BOOL_TNODE::exchangexy()
{
    visit_nodes(this, [](BOOL_TNODE& node) {
        if (node.usage != 0) {
            return step::past;
        }
        node.usage = 1;
        if (node.op == named_op(BOOL_VAR_QX)) {
            node.op = named_op(BOOL_VAR_QY);
        } else if (node.op == named_op(BOOL_VAR_QY)) {
            node.op = named_op(BOOL_VAR_QX);
        }
        return basbd_is_leaf(node) ? step::past : step::below;
    });
}

void BOOL_TNODE::subtreeforsig(TECHMAP_SIG* sig, BOOL_TNODE* sub, unsigned char iscompl)
{
    if (basbd_is_leaf(*this)) {
        report(report_site::substitute_in_leaf);
        return;
    }
    later_reports reports;
    substitute(this, sig, sub, iscompl != 0, reports);
    reports.send();
}

void BOOL_TNODE::rmsigfromtree(TECHMAP_SIG* sig)
{
    if (basbd_is_leaf(*this)) {
        report(report_site::remove_from_leaf);
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
