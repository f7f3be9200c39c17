#include "node.h"
#include "reports.h"
#include "signal_edits.h"
#include "signal_queries.h"
#include "simplify.h"

#include <memory>
#include <utility>

namespace {

using namespace basbdbool;

/// Simplifies the unshared tree of a function and counts the support anew.
void simplify(BOOL_FUNC& function, later_reports& reports) noexcept
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
void replace_by_simplified(BOOL_FUNC& function, owned_tree tree, later_reports& reports)
{
    replace_tree(function, std::move(tree));
    simplify(function, reports);
}

/// @brief What a function was before a part of it was detached.
///
/// The function becomes that again at the end of the scope, unless `let_go` was called.
class broken_function {
public:
    broken_function(BOOL_FUNC& broken, BOOL_FUNC& detached)
        : function(broken), part(detached), root(broken.root), nsuppt(broken.nsuppt),
          rootcompl(broken.rootcompl)
    {
    }
    broken_function(const broken_function&) = delete;
    broken_function& operator=(const broken_function&) = delete;
    ~broken_function()
    {
        if (root == nullptr) {
            return;
        }
        if (function.root != root) {
            replace_tree(function, owned_tree(root));
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

} // namespace

void BOOL_FUNC::cleanbufs()
{
    if (root != nullptr) {
        later_reports reports;
        replace_by_simplified(*this, owned_tree(new_copy(root)), reports);
        reports.send();
    }
}

void BOOL_FUNC::rmsigfromfunc(TECHMAP_SIG* sig)
{
    if (root == nullptr || sig == nullptr) {
        return;
    }
    // On a copy, so that the function is as it was should the pool give out.
    owned_tree copy(is_leaf_of(*root, sig) ? new_node(BOOL_OP_ZERO) : new_copy(root));
    if (is_operator(copy.get())) {
        remove_signal(copy.get(), sig);
    }
    later_reports reports;
    replace_by_simplified(*this, std::move(copy), reports);
    reports.send();
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

char BOOL_FUNC::getpurefunc()
{
    constexpr char none = BOOL_OP_ZERO;
    if (!is_operator(root)) {
        return none;
    }
    later_reports reports;
    replace_by_simplified(*this, owned_tree(new_copy(root)), reports);
    char op = none;
    if (is_operator(root)) {
        push_complements(root, std::exchange(rootcompl, static_cast<unsigned char>(0)), reports);
        op = is_pure(root, root->op) ? static_cast<char>(root->op) : none;
    }
    reports.send();
    return op;
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
    broken_function whole(*this, *part); // until nothing can throw any more
    part->nsuppt = support_of(part->root);
    later_reports reports;
    root = new_copy(root);
    simplify(*this, reports);
    reports.send();
    whole.let_go();
    return part.release();
}
