#include "signal_queries.h"

#include "names.h"

namespace basbdbool {

bool is_in_tree(BOOL_TNODE* root, const TECHMAP_SIG* sig)
{
    return any_leaf(root, [sig](const BOOL_TNODE& leaf) { return is_leaf_of(leaf, sig); });
}

} // namespace basbdbool

using namespace basbdbool;

bool BOOL_TNODE::issiginsuppt(TECHMAP_SIG* sig) { return is_in_tree(this, sig); }

bool BOOL_TNODE::issigcompl(TECHMAP_SIG* sig)
{
    if (basbd_is_leaf(*this)) {
        return false;
    }
    bool is_complemented = false;
    walk_edges<branch::right>(this, [&](const BOOL_TNODE* child, unsigned char flag) {
        if (is_operator(child)) {
            return step::below;
        }
        if (child == nullptr || !is_leaf_of(*child, sig)) {
            return step::past;
        }
        is_complemented = flag != 0;
        return step::stop;
    });
    return is_complemented;
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

void BOOL_TNODE::listsigs(TECHMAP_SIG** list)
{
    signal_list signals(list);
    signals.enter_listed();
    signals.enter_all(this);
}

unsigned int BOOL_TNODE::countleaves()
{
    unsigned int count = 0;
    visit_leaves(this, [&](const BOOL_TNODE& /*leaf*/) { ++count; });
    return count;
}
