/// The exact shape that each edit leaves. A leading "~" is the function's own complement.
#include "counting_pool.h"
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>

using tree_oracle::parse_shape;
using tree_oracle::shape;
using tree_oracle::signal;

namespace {

TECHMAP_SIG* const s0 = signal(0);
TECHMAP_SIG* const s1 = signal(1);
TECHMAP_SIG* const s2 = signal(2);

void read(BOOL_FUNC& function, const char* text)
{
    function.rootcompl = *text == '~' ? 1 : 0;
    function.root = parse_shape(text + function.rootcompl);
    function.nsuppt = function.countsuppt();
}

std::string written(const BOOL_FUNC& function)
{
    return (function.rootcompl != 0 ? "~" : "") + shape(function.root);
}

struct ROW {
    const char* before;
    std::function<void(BOOL_FUNC&)> edit;
    const char* after;
    int nsuppt;
};

/// Puts what an operation of the root answers in the root's place, as the operation asks for.
std::function<void(BOOL_FUNC&)> replacing(BOOL_TNODE* (BOOL_TNODE::*rewrite)())
{
    return [rewrite](BOOL_FUNC& f) {
        BOOL_TNODE* const old = f.root;
        f.root = (old->*rewrite)();
        if (f.root != old) {
            delete old;
        }
        f.root->lcompl = basbd_is_leaf(*f.root) ? 0 : f.root->lcompl;
    };
}

void clean(BOOL_FUNC& f) { f.cleanbufs(); }
void make_pure(BOOL_FUNC& f) { f.getpurefunc(); }
void push(BOOL_FUNC& f) { f.root->pushbubblestoleaves(1); }
void complement(BOOL_FUNC& f) { f.root->complsubtree(); }
void exchange(BOOL_FUNC& f) { f.exchangexy(); }
void remove_s0(BOOL_FUNC& f) { f.rmsigfromfunc(s0); }
void add_s2(BOOL_FUNC& f) { f.addsigtofunc(s2, 0); }
void add_not_s2(BOOL_FUNC& f) { f.addsigtofunc(s2, 5); }
void fix_s0(BOOL_FUNC& f) { f.setsigto1(s0); }
void complement_s0(BOOL_FUNC& f) { f.complsiginfunc(s0); }
void put_s2_for_s0(BOOL_FUNC& f) { f.subsig1forsig2(s2, s0); }

/// Puts NOT (s1 OR s0) in the place of s0.
void substitute_s0(BOOL_FUNC& f)
{
    BOOL_FUNC other;
    read(other, "~OR(s1,s0)");
    f.substfnforsig(s0, &other);
    EXPECT_EQ(written(other), "~OR(s1,s0)");
}

template <int SIZE>
void break_off(BOOL_FUNC& f)
{
    const std::unique_ptr<BOOL_FUNC> part(f.breakfunc(SIZE));
    ASSERT_EQ(part == nullptr, SIZE == 0 || SIZE >= 4);
    if (part != nullptr) {
        EXPECT_EQ(written(*part), SIZE == 1 ? "s3" : SIZE == 2 ? "AND(~s2,s3)" : "?");
        EXPECT_EQ(part->nsuppt, SIZE);
    }
}

const ROW rows[] = {
    {"AND(s0,1)", clean, "s0", 1},
    {"AND(OR(s0,s1),~1)", clean, "0", 0},
    {"OR(0,~OR(s0,s1))", clean, "AND(~s0,~s1)", 2},
    {"XOR(1,AND(s0,s1))", clean, "OR(~s0,~s1)", 2},
    {"AND(~s0,~s0)", clean, "~s0", 1},
    {"AND(s0,~s0)", clean, "0", 0},
    {"AND(s0:C,s0)", clean, "s0:C", 1},
    {"AND(~XOR(s0,s1),-)", clean, "XOR(~s0,s1)", 2},
    {"~OR(~-,~-)", clean, "1", 0},
    {"~0", clean, "1", 0},
    {"op40(~s0,1)", clean, "op40(~s0,1)", 1},
    {"op40(0,s1)", clean, "op40(0,s1)", 1},
    {"op40(s0,s0)", clean, "op40(-,-)", 0},
    {"op40(s0,s1)", push, "op40(s0,s1)", 2},
    {"XOR(s0,s1)", complement, "XOR(~s0,s1)", 2},
    {"OR(AND(s0,s1),s2)", push, "AND(OR(~s0,~s1),~s2)", 3},
    {"XOR(s0,~XOR(s1,s2))", make_pure, "XOR(s0,XOR(~s1,s2))", 3},
    {"~OR(s0,s1)", make_pure, "AND(~s0,~s1)", 2},
    {"XOR(s0,~0)", replacing(&BOOL_TNODE::trivialrchild), "s0", 1},
    {"AND(~0,s1)", replacing(&BOOL_TNODE::triviallchild), "s1", 1},
    {"AND(~s0,s0)", replacing(&BOOL_TNODE::idempotency), "0", 1},
    {"AND(s0,s1)", remove_s0, "s1", 1},
    {"s0", remove_s0, "0", 0},
    {"~s0", remove_s0, "1", 0},
    {"AND(~-,-)", add_not_s2, "AND(s2,-)", 1},
    {"OR(s2,s2)", add_s2, "OR(s2,OR(s2,s2))", 1},
    {"OR(s0,~s1)", add_not_s2, "OR(s0,OR(~s1,~s2))", 3},
    {"OR(s0,~AND(XOR(s0,s2),s1))", add_s2, "OR(s0,~AND(XOR(s0,s2),AND(s1,s2)))", 3},
    {"s0", add_s2, "s0", 1},
    {"AND(~s0:A,s1)", fix_s0, "AND(~1,s1)", 1},
    {"AND(~s0,XOR(s0,s1))", complement_s0, "AND(s0,XOR(~s0,s1))", 2},
    {"s0", complement_s0, "~s0", 1},
    {"OR(s0:X,AND(s0:Y,s0:A))", exchange, "OR(s0:Y,AND(s0:X,s0:A))", 1},
    {"AND(s0:B,s2)", put_s2_for_s0, "AND(s2:B,s2)", 2},
    {"AND(~s0,s0:A)", substitute_s0, "AND(OR(s1,s0),~OR(s1,s0))", 2},
    {"AND(s0,AND(s1,AND(~s2,s3)))", break_off<1>, "AND(s0,AND(s1,~s2))", 3},
    {"AND(s0,AND(s1,~AND(~s2,s3)))", break_off<2>, "AND(s0,s1)", 2},
    {"AND(s0,AND(s1,AND(s2,s3)))", break_off<0>, "AND(s0,AND(s1,AND(s2,s3)))", 4},
    {"AND(s0,AND(s0,1))", break_off<4>, "AND(s0,AND(s0,1))", 1},
};

} // namespace

TEST(shapes, after_each_edit)
{
    const long before = counting_pool::live();
    for (const ROW& row : rows) {
        SCOPED_TRACE(row.before);
        BOOL_FUNC function;
        read(function, row.before);
        row.edit(function);
        EXPECT_EQ(written(function), row.after);
        EXPECT_EQ(function.nsuppt, row.nsuppt);
    }
    EXPECT_EQ(counting_pool::live(), before);
    EXPECT_EQ(host_recorder::take_report_lines(), (std::vector<int>{836, 902, 945, 1482}));
}

TEST(shapes, multiplexer_of_two_cofactors)
{
    BOOL_FUNC function;
    function.setlogic1();
    function.buildcofactexpr(s0, s1, s2);
    EXPECT_EQ(written(function), "OR(AND(s0,s1),AND(~s0,s2))");
    EXPECT_EQ(function.nsuppt, 3);
    BOOL_FUNC other(&function);
    function.setsigto1(s0);
    EXPECT_FALSE(function.islogic1());
    EXPECT_EQ(written(function), "s1");
    other.setsigto0(s0);
    EXPECT_FALSE(other.islogic0());
    EXPECT_EQ(written(other), "s2");
}

TEST(shapes, shared_nodes_are_edited_and_freed_once)
{
    const long before = counting_pool::live();
    for (const bool removes : {false, true}) {
        BOOL_FUNC function(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
        BOOL_TNODE* const leaf = parse_shape("s0");
        auto* const shared = new BOOL_TNODE(BOOL_OP_OR, leaf, 1, leaf, 0);
        function.root->left = function.root->right = shared;
        if (removes) {
            function.root->rmsigfromtree(s0);
            EXPECT_EQ(written(function), "AND(OR(~-,-),OR(~-,-))");
        } else {
            substitute_s0(function);
            EXPECT_EQ(written(function), "AND(OR(OR(s1,s0),~OR(s1,s0)),OR(OR(s1,s0),~OR(s1,s0)))");
        }
    }
    EXPECT_EQ(counting_pool::live(), before);
}

TEST(shapes, constants_hold_no_signal)
{
    const tree_oracle::OWNED_TREE tree(parse_shape("AND(0,OR(1,s0))"));
    EXPECT_FALSE(tree->issiginsuppt(nullptr));
    tree->setsigto1(nullptr);
    tree->subsig1forsig2(s1, nullptr);
    EXPECT_EQ(shape(tree.get()), "AND(0,OR(1,s0))");
    TECHMAP_SIG* list[20] = {};
    tree->listsigs(list);
    EXPECT_EQ(list[0], s0);
    EXPECT_EQ(list[1], nullptr);
}
