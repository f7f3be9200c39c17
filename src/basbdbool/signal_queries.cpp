#include "signal_queries.h"

#include "names.h"

bool is_in_tree(BOOL_TNODE* root, const TECHMAP_SIG* sig)
{
    return any_leaf(root, [sig](const BOOL_TNODE& leaf) { return is_leaf_of(leaf, sig); });
}

bool BOOL_TNODE::issiginsuppt(TECHMAP_SIG* sig) { return is_in_tree(this, sig); }

bool BOOL_TNODE::issigcompl(TECHMAP_SIG* sig)
{
    if (basbd_is_leaf(*this)) {
        return false;
    }
    TREE_PATH path(this);
    for (bool right_is_done = false;;) {
        const BOOL_TNODE& node = *path.node();
        if (!right_is_done && node.right != nullptr) {
            if (is_leaf_of(*node.right, sig)) {
                return node.rcompl != 0;
            }
            if (is_operator(node.right)) {
                path.descend_right();
                continue;
            }
        }
        right_is_done = false;
        if (node.left != nullptr) {
            if (is_leaf_of(*node.left, sig)) {
                return node.lcompl != 0;
            }
            if (is_operator(node.left)) {
                path.descend_left();
                continue;
            }
        }
        do {
            if (path.at_start()) {
                return false;
            }
        } while (path.ascend() == SIDE::LEFT);
        right_is_done = true;
    }
}

bool BOOL_TNODE::isvarinleaf(BOOL_VARNAME v) { return is_name(v) && op == named_op(v); }

bool BOOL_TNODE::isvarinsuppt(BOOL_VARNAME v)
{
    return any_leaf(this, [v](BOOL_TNODE& leaf) { return leaf.isvarinleaf(v); });
}

BOOL_VARNAME BOOL_TNODE::getsigvname(TECHMAP_SIG* sig)
{
    BOOL_VARNAME name = BOOL_VAR_NONE;
    any_leaf(this, [&](const BOOL_TNODE& leaf) {
        if (is_leaf_of(leaf, sig) && is_named_leaf(leaf)) {
            name = leaf_name(leaf);
        }
        return name != BOOL_VAR_NONE;
    });
    return name;
}

void BOOL_TNODE::listsigs(TECHMAP_SIG** list) { SIGNAL_LIST(list).enter_all(this); }

unsigned int BOOL_TNODE::countleaves()
{
    unsigned int count = 0;
    visit_leaves(this, [&](const BOOL_TNODE& /*leaf*/) { ++count; });
    return count;
}
