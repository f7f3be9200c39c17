/// Trees whose depth or sharing would ruin a recursive or a path-by-path walk. Run it on a small
/// stack.
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

using tree_oracle::parse_shape;
using tree_oracle::shape;
using tree_oracle::signal;

namespace {

#ifndef BASBD_SPINE_LENGTH
#define BASBD_SPINE_LENGTH 1000000
#endif
constexpr unsigned spine_length = BASBD_SPINE_LENGTH;

/// Operators in a row, AND and OR in turn, over the leaves aA and bB, and cC at the end; every edge
/// along the spine is complemented.
BOOL_TNODE* make_spine(bool leans_left)
{
    BOOL_TNODE* spine = parse_shape("cC");
    for (unsigned i = 0; i < spine_length; ++i) {
        auto* leaf = new BOOL_TNODE(static_cast<char>(BOOL_OP_FIRST_NAMED + i % 2), signal(i % 2));
        const char op = i % 2 == 0 ? BOOL_OP_AND : BOOL_OP_OR;
        spine = leans_left ? new BOOL_TNODE(op, spine, 1, leaf, 0)
                           : new BOOL_TNODE(op, leaf, 0, spine, 1);
    }
    return spine;
}

/// Every walk over a spine.
void walk_spine(bool leans_left)
{
    BOOL_FUNC f;
    f.root = make_spine(leans_left);
    f.nsuppt = f.countsuppt();
    EXPECT_EQ(f.nsuppt, 3);
    EXPECT_EQ(f.root->countleaves(), spine_length + 1);
    EXPECT_TRUE(f.root->issigcompl(signal(2)));
    EXPECT_EQ(f.getvarname(signal(2)), BOOL_VAR_C);
    char names[16] = "F";
    f.catvars(names);
    EXPECT_STREQ(names, "F:A:B:C");
    const std::unique_ptr<char[]> text(f.writeeqn());
    EXPECT_EQ(std::strlen(text.get()), 5UL * spine_length - 1);

    BOOL_FUNC copy(&f);
    copy.complsiginfunc(signal(2));
    copy.exchangexy();
    copy.setvarname(signal(2), BOOL_VAR_D);
    copy.subsig1forsig2(signal(3), signal(2));
    EXPECT_FALSE(copy.root->issigcompl(signal(3)));
    tree_oracle::parsed_func leaf("e");
    copy.substfnforsig(signal(3), &leaf);
    EXPECT_EQ(copy.nsuppt, 3);
    copy.addsigtofunc(signal(5), 0);
    copy.rmsigfromfunc(signal(5));
    copy.rmsigfromfunc(signal(1)); // leaves complements that cancel in pairs
    EXPECT_EQ(copy.getpurefunc(), BOOL_OP_OR);
    copy.setsigto1(signal(0));
    copy.cleanbufs();
    EXPECT_EQ(shape(copy), "~e");

    const std::unique_ptr<BOOL_FUNC> part(f.breakfunc(2));
    EXPECT_EQ(part == nullptr, leans_left);
    f.root->unmarknodes();
    f.root->markusage();
    f.root->reclaim();
    delete std::exchange(f.root, nullptr);
}

} // namespace

TEST(depth, spines)
{
    walk_spine(true);
    walk_spine(false);
}

TEST(depth, as_many_paths_as_two_to_the_sixtieth)
{
    BOOL_FUNC function;
    BOOL_TNODE* const lowest = parse_shape("*(aX,-)");
    lowest->right = lowest->left;
    function.root = lowest;
    for (int level = 1; level < 60; ++level) {
        function.root = new BOOL_TNODE(BOOL_OP_XOR, function.root, 0, function.root, 0);
        function.root->usage = static_cast<unsigned short>(level % 3);
    }
    EXPECT_FALSE(function.root->issigcompl(signal(0)));
    function.complsiginfunc(signal(0));
    EXPECT_TRUE(function.root->issigcompl(signal(0)));
    EXPECT_EQ(shape(lowest), "*(~aX,~aX)");
    function.exchangexy();
    function.root->unmarknodes();
    EXPECT_EQ(lowest->usage + lowest->left->usage + function.root->usage, 0);
    function.root->subtreeforsig(signal(0), lowest, 1);
    EXPECT_EQ(shape(lowest), "*(*(~aY,~aY),*(~aY,~aY))");
    EXPECT_EQ(lowest->usage + lowest->left->usage + function.root->usage, 0);

    // Answers that lie before all those paths.
    function.root = new BOOL_TNODE(BOOL_OP_AND, function.root, 0, parse_shape("+(b,c)"), 0);
    EXPECT_FALSE(function.root->issigcompl(signal(1)));
    EXPECT_EQ(function.root->getsubtreeofsize(2), nullptr);
    function.root = new BOOL_TNODE(BOOL_OP_AND, parse_shape("c"), 0, function.root, 0);
    function.addsigtofunc(signal(2), 0);
    EXPECT_EQ(shape(function.root->right->right), "+(b,+(c,c))");
}
