#include "names.h"
#include "node.h"
#include "reports.h"
#include "signal_edits.h"
#include "signal_queries.h"
#include "simplify.h"
#include "tree_path.h"

#include <cstddef>
#include <memory>
#include <utility>

static_assert(sizeof(BOOL_FUNC) == 16 && offsetof(BOOL_FUNC, nsuppt) == 0 &&
                  offsetof(BOOL_FUNC, rootcompl) == 2 && offsetof(BOOL_FUNC, root) == 8,
              "hosts rely on the layout of a function");

namespace {

unsigned short support_of(BOOL_TNODE* root)
{
    TECHMAP_SIG* slots[support_limit] = {};
    SIGNAL_LIST support(slots);
    support.enter_all(root);
    return support.size();
}

/// Frees a function's tree and gives it another.
void replace_tree(BOOL_FUNC& function, OWNED_TREE tree)
{
    free_tree(std::exchange(function.root, tree.release()));
}

/// Simplifies the unshared tree of a function and counts the support anew.
void simplify(BOOL_FUNC& function, LATER_REPORTS& reports) noexcept
{
    BOOL_TNODE above(BOOL_OP_AND, function.root, function.rootcompl, nullptr, 0);
    reduce_operands(&above, reports);
    function.root = above.left;
    function.rootcompl = above.lcompl;
    if (function.rootcompl != 0 && is_constant(*function.root)) {
        function.root->complsubtree();
        function.rootcompl = 0;
    }
    function.nsuppt = support_of(function.root);
}

/// Gives a function an unshared tree in place of its own, and simplifies it.
void replace_by_simplified(BOOL_FUNC& function, OWNED_TREE tree)
{
    LATER_REPORTS reports;
    replace_tree(function, std::move(tree));
    simplify(function, reports);
    reports.send();
}

/// @brief What a function was before a part of it was detached.
///
/// Made that again at the end of the scope, unless `let_go` was called.
class BROKEN_FUNCTION {
public:
    BROKEN_FUNCTION(BOOL_FUNC& broken, BOOL_FUNC& detached)
        : function(broken), part(detached), root(broken.root), nsuppt(broken.nsuppt),
          rootcompl(broken.rootcompl)
    {
    }
    BROKEN_FUNCTION(const BROKEN_FUNCTION&) = delete;
    BROKEN_FUNCTION& operator=(const BROKEN_FUNCTION&) = delete;
    ~BROKEN_FUNCTION()
    {
        if (root == nullptr) {
            return;
        }
        if (function.root != root) {
            replace_tree(function, OWNED_TREE(root));
        }
        function.nsuppt = nsuppt;
        function.rootcompl = rootcompl;
        while (root->right != nullptr) {
            root = root->right;
        }
        root->right = std::exchange(part.root, nullptr);
    }

    /// Frees what the function was made of, but for the part's nodes.
    void let_go() { free_tree(std::exchange(root, nullptr), part.root); }

private:
    BOOL_FUNC& function;
    BOOL_FUNC& part;
    BOOL_TNODE* root;
    unsigned short nsuppt;
    unsigned char rootcompl;
};

/// Makes a function the constant `op`.
void set_constant(BOOL_FUNC& function, BOOL_OP op)
{
    replace_tree(function, OWNED_TREE(new_node(op)));
    function.nsuppt = 0;
    function.rootcompl = 0;
}

/// Fixes a signal to a constant and counts the support anew, in one walk.
void fix_signal(BOOL_FUNC& function, const TECHMAP_SIG* sig, BOOL_OP op, REPORT without_root)
{
    if (function.root == nullptr) {
        report(without_root);
        return;
    }
    TECHMAP_SIG* slots[support_limit] = {};
    SIGNAL_LIST support(slots);
    visit_leaves(function.root, [&](BOOL_TNODE& leaf) {
        fix_leaf(leaf, sig, op);
        support.enter(leaf);
    });
    function.nsuppt = support.size();
}

/// @brief Whether the tree of an operator holds `sig`.
///
/// The search passes the place where a new leaf goes.
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
OWNED_TREE make_and(TECHMAP_SIG* left, unsigned char is_complemented, TECHMAP_SIG* right)
{
    OWNED_TREE node(new_node(BOOL_OP_AND));
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

// Once the delegate is done, the destructor frees the root should the names throw.
BOOL_FUNC::BOOL_FUNC(BOOL_FUNCTYPE type, char const** names, BOOL_VARNAME last) : BOOL_FUNC()
{
    root = new_node(static_cast<signed char>(type));
    choose_name_table(names, last);
}

BOOL_FUNC::BOOL_FUNC(BOOL_FUNC* src) : BOOL_FUNC()
{
    if (src == nullptr) {
        report(REPORT::FUNC_COPY_OF_NULL);
        return;
    }
    root = new_copy(src->root);
    nsuppt = src->nsuppt;
    rootcompl = src->rootcompl;
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
        report(REPORT::ADD_WITHOUT_ROOT);
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
    OWNED_TREE if_set = make_and(s, 0, a);
    OWNED_TREE if_clear = make_and(s, 1, b);
    OWNED_TREE sum(new_node(BOOL_OP_OR));
    sum->left = if_set.release();
    sum->right = if_clear.release();
    replace_tree(*this, std::move(sum));
    rootcompl = 0;
    nsuppt = 3;
}

bool BOOL_FUNC::islogic1()
{
    cleanbufs();
    return root != nullptr && root->op == BOOL_OP_ONE;
}

bool BOOL_FUNC::islogic0()
{
    cleanbufs();
    return root != nullptr && root->op == BOOL_OP_ZERO;
}

BOOL_VARNAME BOOL_FUNC::getvarname(TECHMAP_SIG* sig)
{
    if (root == nullptr) {
        report(REPORT::GET_NAME_WITHOUT_ROOT);
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
    TECHMAP_SIG* slots[support_limit] = {};
    SIGNAL_LIST support(slots);
    support.enter_all(root);
    if (other != nullptr && other->root != nullptr) {
        support.enter_all(other->root);
    }
    return support.size();
}

char BOOL_FUNC::getpurefunc()
{
    constexpr char none = BOOL_OP_ZERO;
    if (!is_operator(root)) {
        return none;
    }
    cleanbufs();
    if (!is_operator(root)) {
        return none;
    }
    LATER_REPORTS reports;
    push_complements(root, std::exchange(rootcompl, static_cast<unsigned char>(0)), reports);
    const char op = is_pure(root, root->op) ? static_cast<char>(root->op) : none;
    reports.send();
    return op;
}

void BOOL_FUNC::setvarname(TECHMAP_SIG* sig, BOOL_VARNAME v)
{
    if (root == nullptr) {
        report(REPORT::NAME_WITHOUT_ROOT);
        return;
    }
    root->setsigvname(sig, v);
}

void BOOL_FUNC::setsigto1(TECHMAP_SIG* sig)
{
    fix_signal(*this, sig, BOOL_OP_ONE, REPORT::SET_1_WITHOUT_ROOT);
}

void BOOL_FUNC::setsigto0(TECHMAP_SIG* sig)
{
    fix_signal(*this, sig, BOOL_OP_ZERO, REPORT::SET_0_WITHOUT_ROOT);
}

void BOOL_FUNC::complsiginfunc(TECHMAP_SIG* sig)
{
    if (root == nullptr) {
        report(REPORT::COMPLEMENT_NO_ROOT);
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
        report(REPORT::EXCHANGE_WITHOUT_ROOT);
        return;
    }
    unmark_tree(root);
    root->exchangexy();
}

void BOOL_FUNC::subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2)
{
    if (root == nullptr) {
        report(REPORT::RENAME_WITHOUT_ROOT);
        return;
    }
    root->subsig1forsig2(sig1, sig2);
}

void BOOL_FUNC::substfnforsig(TECHMAP_SIG* sig, BOOL_FUNC* fn)
{
    if (root == nullptr) {
        report(REPORT::SUBSTITUTE_NO_ROOT);
        return;
    }
    BOOL_TNODE* const sub = fn == nullptr ? nullptr : fn->root;
    const bool is_complemented = fn != nullptr && fn->rootcompl != 0;
    if (sub == root) {
        report(REPORT::SUBSTITUTE_ITSELF);
        return;
    }
    LATER_REPORTS reports;
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

void BOOL_FUNC::rmsigfromfunc(TECHMAP_SIG* sig)
{
    if (root == nullptr || sig == nullptr) {
        return;
    }
    // On a copy, so that the function is as it was should the pool give out.
    OWNED_TREE copy(is_leaf_of(*root, sig) ? new_node(BOOL_OP_ZERO) : new_copy(root));
    if (is_operator(copy.get())) {
        remove_signal(copy.get(), sig);
    }
    replace_by_simplified(*this, std::move(copy));
}

void BOOL_FUNC::cleanbufs()
{
    if (root != nullptr) {
        replace_by_simplified(*this, OWNED_TREE(new_copy(root)));
    }
}

BOOL_FUNC* BOOL_FUNC::breakfunc(unsigned short size)
{
    if (nsuppt <= size || root == nullptr) {
        return nullptr;
    }
    auto part = std::make_unique<BOOL_FUNC>();
    part->root = root->getsubtreeofsize(size);
    if (part->root == nullptr) {
        cleanbufs();
        return nullptr;
    }
    BROKEN_FUNCTION whole(*this, *part); // until nothing can throw any more
    part->nsuppt = support_of(part->root);
    LATER_REPORTS reports;
    root = new_copy(root);
    simplify(*this, reports);
    reports.send();
    whole.let_go();
    return part.release();
}
