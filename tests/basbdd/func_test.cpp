#include "bdd_oracle.h"
#include "host_recorder.h"

#include <gtest/gtest.h>

#include <memory>

using tree_oracle::FUNC;
using tree_oracle::signal;

namespace {

std::string text_of(BDD_FUNC& f)
{
    char out[256];
    char names[] = "abcdefghijklm";
    f.printbddexpr(out, names);
    return out;
}

std::vector<unsigned short> support_of(const BDD_FUNC& f)
{
    return {f.suppt, f.suppt + f.nvars + 1};
}

/// Variables 0 to 2 stand for the tree oracle's signals.
struct func : testing::Test {
    TECHMAP_SIG* signals[3] = {signal(0), signal(1), signal(2)};
    BDD_MANAGER manager{BDD_STORE_HASH, 3, signals};
    FUNC conjunction{"*(a,b)"};
    BDD_FUNC f{3, &conjunction, &manager, nullptr};

    std::string converted(const char* shape, unsigned short* remap = nullptr)
    {
        FUNC tree(shape);
        BDD_FUNC bdd(3, &tree, &manager, remap);
        return text_of(bdd);
    }
};

} // namespace

TEST(typical_request, runs_as_it_stands)
{
    for (const auto method : {BDD_STORE_HASH, BDD_STORE_TREE, BDD_STORE_METHOD(7)}) {
        TECHMAP_SIG* st[] = {signal(0), signal(1)};
        BOOL_FUNC function(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
        function.addsigtofunc(st[0], 0);
        function.addsigtofunc(st[1], 0);
        function.setvarname(st[0], BOOL_VAR_A);
        function.setvarname(st[1], BOOL_VAR_B);
        EXPECT_EQ(function.nsuppt, 2);
        const std::unique_ptr<char[]> equation(function.writeeqn());
        EXPECT_STREQ(equation.get(), "A*B");
        BDD_MANAGER manager(method, 2, st);
        BDD_FUNC bdd(2, &function, &manager, nullptr);
        EXPECT_EQ(support_of(bdd), (std::vector<unsigned short>{0, 1, 0xFFFF}));
        EXPECT_EQ(text_of(bdd), "(a?b:0)");
        bdd.setsigto1(st[1]);
        EXPECT_EQ(bdd.bdd, manager.table->findoradd(0, basbdd_one, basbdd_zero));
        EXPECT_EQ(text_of(bdd), "a");
    }
}

TEST_F(func, texts)
{
    const std::pair<const char*, const char*> cases[] = {{"1", "1"},
                                                         {"~1", "0"},
                                                         {"*(a,b)", "(a?b:0)"},
                                                         {"+(a,b)", "(a?1:b)"},
                                                         {"*(a,~b)", "~(a?b:1)"},
                                                         {"@(a,c)", "~(a?c:~c)"},
                                                         {"*(-,a)", "0"},
                                                         {"?(~a,-)", "~a"},
                                                         {"-", "0"},
                                                         {"~-", "1"}};
    for (const auto& [tree, text] : cases) {
        EXPECT_EQ(converted(tree), text) << tree;
    }
    unsigned short exchange[] = {1, 0, 2};
    EXPECT_EQ(converted("*(a,~b)", exchange), "~(a?1:~b)");
    char out[8];
    char names[] = "ab";
    EXPECT_EQ(std::string(out, f.bdd->printbddexpr(out, names)), "a?b:0");
}

TEST_F(func, copies_the_support_and_adds_to_a_list)
{
    BDD_FUNC copy(&f);
    EXPECT_EQ(support_of(copy), support_of(f));
    EXPECT_EQ(copy.nsuppt + copy.countsuppt(), 4);
    copy.setbdd(nullptr);
    EXPECT_EQ(text_of(copy), "0");
    EXPECT_EQ(text_of(f), "(a?b:0)");
    std::vector<unsigned short> list{1, 5, 0xFFFF, 0xFFFF, 0xFFFF};
    f.bdd->adduniqueidx(list.data());
    EXPECT_EQ(list, (std::vector<unsigned short>{0, 1, 5, 0xFFFF, 0xFFFF}));
}

TEST_F(func, reports_each_misuse_once)
{
    const auto lines = [] { return host_recorder::take_report_lines(); };
    using LINES = std::vector<int>;
    BDD_FUNC no_source(nullptr);
    const auto report = host_recorder::take_reports().at(0);
    EXPECT_EQ(report.text + report.app + " " + report.id + " " + report.rev,
              "basbd 4:1 $Revision: 1.5 $");
    EXPECT_EQ(std::make_tuple(report.line, report.kind, report.extra),
              std::make_tuple(150, 2, nullptr));
    no_source.setsigto1(signal(0));
    EXPECT_EQ(text_of(no_source), "0");

    BDD_FUNC no_tree(3, nullptr, &manager, nullptr);
    EXPECT_EQ(lines(), LINES{166});
    EXPECT_EQ(no_tree.bdd, basbdd_zero);

    BDD_MANAGER other(BDD_STORE_TREE, 3, signals);
    BDD_FUNC foreign(1, &conjunction, &other, nullptr);
    EXPECT_EQ(support_of(foreign), (std::vector<unsigned short>{0, 0xFFFF})) << "the list is full";
    BDD_FUNC(&f).substfnforsig(signal(0), &foreign);
    EXPECT_EQ(lines(), (LINES{202, 205}));

    BDD_NODE childless(0);
    BDD_FUNC unusable(&f);
    unusable.bdd = &childless;
    EXPECT_EQ(text_of(unusable), "(a?:)");
    EXPECT_EQ(lines(), (LINES{97, 117}));
    unusable.bdd = nullptr;
    EXPECT_EQ(text_of(unusable), "");
    EXPECT_EQ(lines(), LINES{241});

    // One unknown signal on two paths, below a good subtree and an unknown operator.
    FUNC shared("~?(~*(a,j),@(b,-))");
    shared.root->right->right = shared.root->left;
    BDD_FUNC g(3, &shared, &manager, nullptr);
    EXPECT_EQ(lines(), (LINES{563, 563, 586}));
    EXPECT_EQ(text_of(g), "1") << "the complement of what could not be converted";
    EXPECT_EQ(converted("*(?(a,b),j)"), "0");
    EXPECT_EQ(lines(), (LINES{586, 563})) << "left is converted before right";
    unsigned short remap[] = {0, 3, 2};
    BDD_FUNC remapped(3, &conjunction, &manager, remap);
    EXPECT_EQ(lines(), LINES{563});
    EXPECT_EQ(text_of(remapped), "0");
}

TEST(conversion_and_edits, agree_with_the_tree_evaluator)
{
    void (*const edits[])(BDD_FUNC&, TECHMAP_SIG*, BDD_FUNC*) = {
        [](BDD_FUNC& f, TECHMAP_SIG* sig, BDD_FUNC*) { f.setsigto0(sig); },
        [](BDD_FUNC& f, TECHMAP_SIG* sig, BDD_FUNC*) { f.setsigto1(sig); },
        [](BDD_FUNC& f, TECHMAP_SIG* sig, BDD_FUNC*) { f.complsiginfn(sig); },
        [](BDD_FUNC& f, TECHMAP_SIG* sig, BDD_FUNC* fn) { f.substfnforsig(sig, fn); }};
    constexpr unsigned variables = 12;
    TECHMAP_SIG* order[variables];
    unsigned short remap[variables];
    for (unsigned short i = 0; i < variables; ++i) {
        order[i] = signal(i);
        remap[i] = static_cast<unsigned short>((5 * i + 3) % variables);
    }
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        tree_oracle::SHAPES shapes;
        shapes.signals = 1 + seed % variables;
        shapes.depth = 9;
        shapes.lone_right = shapes.shared = true;
        BOOL_FUNC tree;
        tree.root = tree_oracle::random_tree(random, shapes);
        tree.rootcompl = seed % 2;
        const auto expected = tree_oracle::column(tree, variables);
        BDD_MANAGER manager(BDD_STORE_METHOD(seed % 2), variables, order);
        BDD_FUNC straight(variables, &tree, &manager, nullptr);
        BDD_FUNC moved(variables, &tree, &manager, remap);
        const unsigned edit = seed / 2 % 4;
        const unsigned edited =
            straight.nsuppt == 0 ? 0 : straight.suppt[random() % straight.nsuppt];
        BDD_FUNC after(&straight);
        edits[edit](after, signal(edited), &moved);
        ASSERT_TRUE(bdd_oracle::is_canonical(after.bdd));
        for (unsigned assignment = 0; assignment < 1U << variables; ++assignment) {
            unsigned seen = 0;
            for (unsigned i = 0; i < variables; ++i) {
                seen |= (assignment >> remap[i] & 1U) << i;
            }
            ASSERT_EQ(bdd_oracle::evaluate(straight.bdd, assignment), expected[assignment]);
            ASSERT_EQ(bdd_oracle::evaluate(moved.bdd, assignment), expected[seen]);
            const unsigned was = assignment >> edited & 1U;
            const unsigned put[] = {0, 1, 1 - was, expected[seen] ? 1U : 0U};
            ASSERT_EQ(bdd_oracle::evaluate(after.bdd, assignment),
                      expected[(assignment & ~(1U << edited)) | put[edit] << edited]);
        }
        std::vector<unsigned short> support;
        for (unsigned short i = 0; i < variables; ++i) {
            if (manager.compose(after.bdd, i, basbdd_one) !=
                manager.compose(after.bdd, i, basbdd_zero)) {
                support.push_back(i);
            }
        }
        EXPECT_EQ(after.nsuppt, support.size());
        support.resize(variables + 1, 0xFFFF);
        EXPECT_EQ(support_of(after), support);
        edits[edit](after, signal(15), &moved);
        EXPECT_EQ(after.bdd, basbdd_zero) << "no variable of the manager";
    }
}
