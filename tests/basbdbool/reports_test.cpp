/// Every report site, compared whole.
#include "host_recorder.h"
#include "tree_oracle.h"
#include "ut_msgman.h"

#include <gtest/gtest.h>

#include <functional>

using tree_oracle::OWNED_TREE;
using tree_oracle::parse_shape;
using tree_oracle::shape;
using tree_oracle::signal;

namespace {

struct SITE {
    int line;
    std::function<void()> misuse;
};

/// Runs an operation of a function without a tree, which it must leave without one.
std::function<void()> without_root(const std::function<void(BOOL_FUNC&)>& operation)
{
    return [operation] {
        BOOL_FUNC function;
        operation(function);
        EXPECT_EQ(function.root, nullptr);
        EXPECT_EQ(function.nsuppt, 0);
    };
}

/// Runs an operation of a tree, which must not change.
std::function<void()> unchanged(const char* text, const std::function<void(BOOL_TNODE&)>& operation)
{
    return [=] {
        const OWNED_TREE tree(parse_shape(text));
        operation(*tree);
        EXPECT_EQ(shape(tree.get()), text);
    };
}

void write(BOOL_TNODE& tree)
{
    char* text = new char[256];
    char* cur = text;
    EXPECT_EQ(tree.writesubtree(text, cur), cur);
    EXPECT_EQ(cur, text);
    delete[] text;
}

TECHMAP_SIG* const sig = signal(0);

const SITE sites[] = {
    {56,
     [] {
         EXPECT_EQ(shape(OWNED_TREE(new BOOL_TNODE(static_cast<BOOL_TNODE*>(nullptr))).get()),
                   "AND(-,-)");
     }},
    {252, unchanged("AND(s0,s1)", [](auto& t) { t.setsigvname(sig, BOOL_VAR_NONE); })},
    {323, unchanged("s0", [](auto& t) { t.subtreeforsig(sig, &t, 0); })},
    {441, unchanged("s0", write)},
    {555, unchanged("s0", [](auto& t) { t.complsigintree(sig); })},
    {555, unchanged("AND(-,s0)", [](auto& t) { t.complsigintree(sig); })},
    {659, unchanged("s0", [](auto& t) { t.rmsigfromtree(sig); })},
    {700, unchanged("s0", [](auto& t) { EXPECT_EQ(t.reducetrivialsubtrees(), &t); })},
    {836, unchanged("op30(s0,1)", [](auto& t) { EXPECT_EQ(t.trivialrchild(), &t); })},
    {902, unchanged("op30(1,s0)", [](auto& t) { EXPECT_EQ(t.triviallchild(), &t); })},
    {945, unchanged("op30(-,-)",
                    [](auto& t) {
                        t.left = parse_shape("s0");
                        t.right = parse_shape("s0:A");
                        EXPECT_EQ(t.idempotency(), &t);
                    })},
    {1025, [] { EXPECT_EQ(BOOL_FUNC(static_cast<BOOL_FUNC*>(nullptr)).root, nullptr); }},
    {1138, without_root([](auto& f) { f.addsigtofunc(sig, 0); })},
    {1149, without_root([](auto& f) { f.setvarname(sig, BOOL_VAR_A); })},
    {1158, without_root([](auto& f) { EXPECT_EQ(f.getvarname(sig), BOOL_VAR_NONE); })},
    {1175, without_root([](auto& f) { f.substfnforsig(sig, &f); })},
    {1178, unchanged("AND(s0,s1)",
                     [](auto& t) {
                         BOOL_FUNC function;
                         function.root = &t;
                         function.substfnforsig(sig, &function);
                         function.root = nullptr;
                     })},
    {1301, without_root([](auto& f) { f.setsigto1(sig); })},
    {1312, without_root([](auto& f) { f.setsigto0(sig); })},
    {1323, without_root([](auto& f) { f.complsiginfunc(sig); })},
    {1341, without_root([](auto& f) { f.exchangexy(); })},
    {1351, without_root([](auto& f) { f.subsig1forsig2(sig, sig); })},
    {1463, unchanged("s0", [](auto& t) { t.pushbubblestoleaves(1); })},
    {1482, unchanged("op30(s0,s1)", [](auto& t) { t.pushbubblestoleaves(1); })},
};

} // namespace

TEST(reports, each_site_whole)
{
    static char name[] = "mapper 0"; // outlives the test: the host may report later
    cae_appname = name;
    for (const SITE& site : sites) {
        ++name[sizeof(name) - 2]; // the name counts at the time of the report
        site.misuse();
        const auto reports = host_recorder::take_reports();
        ASSERT_EQ(reports.size(), 1U) << site.line;
        EXPECT_EQ(reports[0].line, site.line);
        EXPECT_EQ(reports[0].text, "");
        EXPECT_EQ(reports[0].app, name);
        EXPECT_EQ(reports[0].id, "4:11");
        EXPECT_EQ(reports[0].rev, "$Revision: 1.27 $");
        EXPECT_EQ(reports[0].kind, 2);
        EXPECT_EQ(reports[0].extra, nullptr);
    }
}

TEST(reports, what_needs_no_tree_is_silent)
{
    without_root([](BOOL_FUNC& f) {
        f.rmsigfromfunc(sig);
        f.cleanbufs();
        EXPECT_EQ(f.countsuppt() + f.countsupptunion(&f), 0);
        EXPECT_EQ(f.breakfunc(0), nullptr);
        EXPECT_EQ(f.getpurefunc(), 22);
        EXPECT_FALSE(f.islogic0() || f.islogic1());
    })();
    EXPECT_TRUE(host_recorder::take_reports().empty());
}
