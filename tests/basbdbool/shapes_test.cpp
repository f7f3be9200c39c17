/// The exact shape that each edit leaves.
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <utility>

using tree_oracle::parsed_func;
using tree_oracle::shape;

namespace {

template <typename record, typename = decltype(new record[1])>
constexpr bool comes_in_arrays(int)
{
    return true;
}
template <typename record>
constexpr bool comes_in_arrays(...)
{
    return false;
}
static_assert(!comes_in_arrays<BOOL_TNODE>(0), "the pool has single blocks only");

TECHMAP_SIG* const a = tree_oracle::signal(0);
TECHMAP_SIG* const b = tree_oracle::signal(1);
TECHMAP_SIG* const c = tree_oracle::signal(2);

struct edit_row {
    const char* before;
    void (*edit)(BOOL_FUNC& f);
    const char* after;
    int nsuppt;
};

void clean(BOOL_FUNC& f) { f.cleanbufs(); }
void make_pure(BOOL_FUNC& f) { f.getpurefunc(); }
void reduce(BOOL_FUNC& f) { delete std::exchange(f.root, f.root->reducetrivialsubtrees()); }
void remove_a(BOOL_FUNC& f) { f.rmsigfromfunc(a); }
void add_c(BOOL_FUNC& f) { f.addsigtofunc(c, 0); }
void add_not_c(BOOL_FUNC& f) { f.addsigtofunc(c, 5); }

void substitute_a(BOOL_FUNC& f)
{
    parsed_func other("~+(b,a)");
    f.substfnforsig(a, &other);
    EXPECT_EQ(shape(other), "~+(b,a)");
}

/// Asks for signals that no leaf holds: none, and a freed one where an operator's child is now.
void edit_no_signal(BOOL_FUNC& f)
{
    for (void* const address :
         {static_cast<void*>(nullptr), static_cast<void*>(f.root->right->left)}) {
        auto* const sig = static_cast<TECHMAP_SIG*>(address);
        f.setsigto1(sig);
        f.subsig1forsig2(b, sig);
        f.complsiginfunc(sig);
        f.substfnforsig(sig, std::make_unique<parsed_func>("b").get());
        f.root->rmsigfromtree(sig);
        EXPECT_FALSE(f.root->issiginsuppt(sig) || f.root->issigcompl(sig));
    }
}

void fold_shared_leaf(BOOL_FUNC& f)
{
    f.root->right = f.root->left;
    delete std::exchange(f.root, f.root->idempotency());
}

/// Flags that are neither 0 nor 1: a walk must not take the node for one that it has been to.
void wrap_with_odd_flags(BOOL_FUNC& f)
{
    f.root = new BOOL_TNODE(BOOL_OP_OR, f.root, 0xFE, nullptr, 0x81);
    f.root->usage = 5;
    f.root->unmarknodes();
    EXPECT_EQ(f.root->usage, 0);
}

template <int size>
void break_off(BOOL_FUNC& f)
{
    constexpr const char* parts[] = {"none", "d 1", "*(~c,d) 2", "none"};
    BOOL_TNODE* operand = f.root;
    while (!basbd_is_leaf(*operand) && operand->countleaves() != size) {
        operand = operand->right;
    }
    const std::unique_ptr<BOOL_FUNC> part(f.breakfunc(size));
    EXPECT_TRUE(part == nullptr || part->root == operand);
    EXPECT_EQ(part ? shape(*part) + ' ' + std::to_string(part->nsuppt) : "none", parts[size]);
}

const edit_row rows[] = {
    {"+(0,~+(a,b))", clean, "*(~a,~b)", 2},
    {"@(1,*(a,b))", clean, "+(~a,~b)", 2},
    {"*(aC,a)", clean, "aC", 1},
    {"*(~@(a,b),-)", clean, "@(~a,b)", 2},
    {"@(~-,~+(-,b))", clean, "~b", 1},
    {"@(a,b)", [](auto& f) { f.root->complsubtree(); }, "@(~a,b)", 2},
    {"+(*(a,b),c)", [](auto& f) { f.root->pushbubblestoleaves(1); }, "*(+(~a,~b),~c)", 3},
    {"@(a,~@(b,c))", make_pure, "@(a,@(~b,c))", 3},
    {"~+(a,b)", make_pure, "*(~a,~b)", 2},
    {"*(a,b)", remove_a, "b", 1},
    {"~a", remove_a, "1", 0},
    {"*(~-,-)", add_not_c, "*(c,-)", 1},
    {"+(c,c)", add_c, "+(c,+(c,c))", 1},
    {"+(a,~b)", add_not_c, "+(a,+(~b,~c))", 3},
    {"+(a,~*(@(a,c),b))", add_c, "+(a,~*(@(a,c),*(b,c)))", 3},
    {"a", add_c, "a", 1},
    {"a", [](auto& f) { f.root->addsig(c, 0); }, "a", 1},
    {"a", [](auto& f) { f.root = new BOOL_TNODE(BOOL_OP_XOR, f.root); }, "@(a,-)", 1},
    {"*(a,~b)", [](auto& f) { f.setfunctype(BOOL_FUNC_OR); }, "+(a,~b)", 2},
    {"a", [](auto& f) { f.setfunctype(BOOL_FUNC_OR); }, "a", 1},
    {"*(~aA,b)", [](auto& f) { f.setsigto1(a); }, "*(~1,b)", 1},
    {"*(~a,@(a,b))", [](auto& f) { f.complsiginfunc(a); }, "*(a,@(~a,b))", 2},
    {"+(aX,*(aY,aA))", [](auto& f) { f.exchangexy(); }, "+(aY,*(aX,aA))", 1},
    {"*(aB,c)", [](auto& f) { f.subsig1forsig2(c, a); }, "*(cB,c)", 2},
    {"*(0,~+(1,a))", edit_no_signal, "*(0,~+(1,a))", 1},
    {"*(~a,aA)", substitute_a, "*(+(b,a),~+(b,a))", 2},
    {"a", [](auto& f) { f.setlogic0(); }, "0", 0},
    {"*(a,1)", reduce, "a", 1},
    {"*(a,-)", fold_shared_leaf, "a", 1},
    {"*(a,b)", wrap_with_odd_flags, "+(*(a,b),~-)", 2},
    {"~1", [](auto& f) { f.buildcofactexpr(a, b, c); }, "+(*(a,b),*(~a,c))", 3},
    {"*(a,*(b,*(~c,d)))", break_off<1>, "*(a,*(b,~c))", 3},
    {"*(a,*(b,~*(~c,d)))", break_off<2>, "*(a,b)", 2},
    {"*(a,*(b,*(c,d)))", break_off<0>, "*(a,*(b,*(c,d)))", 4},
    {"*(a,*(b,*(c,1)))", break_off<3>, "*(a,*(b,*(c,1)))", 3},
};

} // namespace

TEST(shapes, after_each_edit)
{
    for (const edit_row& row : rows) {
        SCOPED_TRACE(row.before);
        parsed_func function(row.before);
        row.edit(function);
        EXPECT_EQ(shape(function), row.after);
        EXPECT_EQ(function.nsuppt, row.nsuppt);
    }
}

TEST(shapes, parts_of_a_broken_function_may_share_a_leaf)
{
    parsed_func function("*(a,*(b,+(-,d)))");
    function.root->right->right->left = function.root->right->left;
    const std::unique_ptr<BOOL_FUNC> part(function.breakfunc(2));
    EXPECT_EQ(shape(*part), "+(b,d)");
    EXPECT_EQ(shape(function), "*(a,b)");
}
