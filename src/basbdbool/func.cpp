#include "names.h"
#include "node.h"

#include "signal_edits.h"
#include "signal_queries.h"

#include "tree_path.h"

#include <cstddef>
#include <memory>
#include <utility>

static_assert(sizeof(BOOL_FUNC) == 16 && offsetof(BOOL_FUNC, nsuppt) == 0 &&
                  offsetof(BOOL_FUNC, rootcompl) == 2 && offsetof(BOOL_FUNC, root) == 8,
              "hosts rely on the layout of a function");
static_assert(int{BOOL_FUNC_AND} == BOOL_OP_AND && int{BOOL_FUNC_XOR} == BOOL_OP_XOR &&
                  int{BOOL_FUNC_OR} == BOOL_OP_OR,
              "the type of a function becomes the op code of its root");

namespace {

using namespace basbdbool;

/// Makes a function the constant `op`.
void set_constant(BOOL_FUNC& function, BOOL_OP op)
{
    replace_tree(function, owned_tree(new_node(op)));
    function.nsuppt = 0;
    function.rootcompl = 0;
}

/// Fixes a signal to a constant and counts the support anew, in one walk.
void fix_signal(BOOL_FUNC& function, const TECHMAP_SIG* sig, BOOL_OP op, report_site without_root)
{
    if (function.root == nullptr) {
        report(without_root);
        return;
    }
    TECHMAP_SIG* slots[support_limit];
    signal_list support(slots);
    visit_leaves(function.root, [&](BOOL_TNODE& leaf) {
        fix_leaf(leaf, sig, op);
        support.enter(leaf);
    });
    function.nsuppt = support.size();
}

/// @brief Whether the tree of an operator holds `sig`.
///
/// On its way it passes where a new leaf goes.
/// @param node  the operator; moved along the right spine as far as the search went
bool is_on_spine(BOOL_TNODE*& node, const TECHMAP_SIG* sig)
{
    if (sig == nullptr) {
        return false; // once, not at every leaf
    }
    for (;;) {
        if (is_in_operand(node->left, sig)) {
            return true;
        }
        if (ends_spine(*node)) {
            return is_in_operand(node->right, sig);
        }
        node = node->right;
    }
}

/// (`left`, complemented if asked for) AND `right`.
owned_tree make_and(TECHMAP_SIG* left, unsigned char is_complemented, TECHMAP_SIG* right)
{
    owned_tree node(new_node(BOOL_OP_AND));
    node->left = new_leaf(left);
    node->lcompl = is_complemented;
    node->right = new_leaf(right);
    return node;
}

} // namespace

BOOL_FUNC::BOOL_FUNC() : nsuppt(0), rootcompl(0), root(nullptr) {}

BOOL_FUNC::BOOL_FUNC(char const** names, BOOL_VARNAME last) : BOOL_FUNC()
{
    choose_name_table(names, last);
}

// It delegates so that the destructor frees the root should choosing the names throw.
BOOL_FUNC::BOOL_FUNC(BOOL_FUNCTYPE type, char const** names, BOOL_VARNAME last) : BOOL_FUNC()
{
    root = new_node(static_cast<signed char>(type));
    choose_name_table(names, last);
}

BOOL_FUNC::BOOL_FUNC(BOOL_FUNC* src) : BOOL_FUNC()
{
    if (src == nullptr) {
        report(report_site::func_copy_of_null);
        return;
    }
    nsuppt = src->nsuppt;
    rootcompl = src->rootcompl;
    root = new_copy(src->root); // last, for it may report
}

BOOL_FUNC::~BOOL_FUNC() { free_tree(root); }

void BOOL_FUNC::setfunctype(BOOL_FUNCTYPE type)
{
    const auto op = static_cast<signed char>(type);
    if (root == nullptr) {
        root = new_node(op);
    } else if (is_operator(root)) {
        root->op = op;
    }
}

void BOOL_FUNC::addsigtofunc(TECHMAP_SIG* sig, unsigned char iscompl)
{
    if (root == nullptr) {
        report(report_site::add_without_root);
        return;
    }
    if (basbd_is_leaf(*root)) {
        return;
    }
    BOOL_TNODE* node = root;
    const bool is_known = is_on_spine(node, sig);
    append_leaf(spine_end(node), sig, iscompl);
    if (!is_known) {
        ++nsuppt;
    }
}

void BOOL_FUNC::setlogic1() { set_constant(*this, BOOL_OP_ONE); }

void BOOL_FUNC::setlogic0() { set_constant(*this, BOOL_OP_ZERO); }

void BOOL_FUNC::buildcofactexpr(TECHMAP_SIG* s, TECHMAP_SIG* a, TECHMAP_SIG* b)
{
    owned_tree if_set = make_and(s, 0, a);
    owned_tree if_clear = make_and(s, 1, b);
    owned_tree sum(new_node(BOOL_OP_OR));
    sum->left = if_set.release();
    sum->right = if_clear.release();
    replace_tree(*this, std::move(sum));
    rootcompl = 0;
    nsuppt = 3;
}

BOOL_VARNAME BOOL_FUNC::getvarname(TECHMAP_SIG* sig)
{
    if (root == nullptr) {
        report(report_site::get_name_without_root);
        return BOOL_VAR_NONE;
    }
    return root->getsigvname(sig);
}

unsigned short BOOL_FUNC::countsuppt() { return root == nullptr ? 0 : support_of(root); }

unsigned short BOOL_FUNC::countsupptunion(BOOL_FUNC* other)
{
    if (root == nullptr) {
        return 0;
    }
    TECHMAP_SIG* slots[support_limit];
    signal_list support(slots);
    support.enter_all(root);
    if (other != nullptr && other->root != nullptr) {
        support.enter_all(other->root);
    }
    return support.size();
}

void BOOL_FUNC::setvarname(TECHMAP_SIG* sig, BOOL_VARNAME v)
{
    if (root == nullptr) {
        report(report_site::name_without_root);
        return;
    }
    root->setsigvname(sig, v);
}

void BOOL_FUNC::setsigto1(TECHMAP_SIG* sig)
{
    fix_signal(*this, sig, BOOL_OP_ONE, report_site::set_1_without_root);
}

void BOOL_FUNC::setsigto0(TECHMAP_SIG* sig)
{
    fix_signal(*this, sig, BOOL_OP_ZERO, report_site::set_0_without_root);
}

void BOOL_FUNC::complsiginfunc(TECHMAP_SIG* sig)
{
    if (root == nullptr) {
        report(report_site::complement_no_root);
    } else if (is_operator(root)) {
        unmark_tree(root);
        root->complsigintree(sig);
    } else if (is_leaf_of(*root, sig)) {
        toggle(rootcompl);
    }
}

void BOOL_FUNC::exchangexy()
{
    if (root == nullptr) {
        report(report_site::exchange_without_root);
        return;
    }
    unmark_tree(root);
    root->exchangexy();
}

void BOOL_FUNC::subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2)
{
    if (root == nullptr) {
        report(report_site::rename_without_root);
        return;
    }
    root->subsig1forsig2(sig1, sig2);
}

void BOOL_FUNC::substfnforsig(TECHMAP_SIG* sig, BOOL_FUNC* fn)
{
    if (root == nullptr) {
        report(report_site::substitute_no_root);
        return;
    }
    BOOL_TNODE* const sub = fn == nullptr ? nullptr : fn->root;
    const bool is_complemented = fn != nullptr && fn->rootcompl != 0;
    if (sub == root) {
        report(report_site::substitute_itself);
        return;
    }
    later_reports reports;
    if (is_operator(root)) {
        substitute(root, sig, sub, is_complemented, reports);
    } else if (is_leaf_of(*root, sig)) {
        replace_tree(*this, copy_or_empty(sub, reports));
        if (is_complemented) {
            toggle(rootcompl);
        }
    }
    nsuppt = support_of(root);
    reports.send();
}
