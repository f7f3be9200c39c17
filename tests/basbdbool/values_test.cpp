/// Operations on random trees against the evaluator.
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

using namespace tree_oracle; // NOLINT(google-build-using-namespace): the subject of this file

namespace {

constexpr unsigned seed = 20;
constexpr int trees = 3000;
constexpr unsigned signals = 4;
using truth_column = std::vector<bool>;

/// Calls `check(function, random)` for random functions.
template <typename check_function>
void for_random_functions(bool lone_right, check_function check)
{
    tree_kind shapes;
    shapes.lone_right = lone_right;
    std::mt19937 random(seed);
    for (int i = 0; i < trees && !testing::Test::HasFatalFailure(); ++i) {
        shapes.depth = 1 + static_cast<unsigned>(i) % 5;
        shapes.shared = i % 2 == 1;
        BOOL_FUNC function;
        function.root = random_tree(random, shapes);
        function.rootcompl = static_cast<unsigned char>(i / 2 % 2);
        function.nsuppt = function.countsuppt();
        SCOPED_TRACE("seed " + std::to_string(seed) + ", tree " + std::to_string(i) + ": " +
                     shape(function));
        check(function, random);
    }
    host_recorder::take_reports();
}

/// The definition of `issigcompl`, word by word.
bool last_edge_flag(BOOL_TNODE* node, TECHMAP_SIG* sig)
{
    for (const bool right : {true, false}) {
        BOOL_TNODE* const child = right ? node->right : node->left;
        if (child != nullptr && child->issiginsuppt(sig)) {
            const bool flag = (right ? node->rcompl : node->lcompl) != 0;
            return basbd_is_leaf(*child) ? flag : last_edge_flag(child, sig);
        }
    }
    return false;
}

} // namespace

TEST(values, pushing_complements_keeps_the_value)
{
    for_random_functions(false, [](BOOL_FUNC& f, auto&) {
        const truth_column before = column(f, signals);
        const char op = f.getpurefunc();
        ASSERT_EQ(column(f, signals), before);
        const std::string text = shape(f);
        std::vector<int> operators;
        for (int i = 0; i < 3; ++i) {
            const std::string complemented{'~', "*@+"[i]};
            EXPECT_EQ(text.find(complemented), std::string::npos) << text;
            if (text.find(complemented[1]) != std::string::npos) {
                operators.push_back(i);
            }
        }
        EXPECT_EQ(op, operators.size() == 1 ? operators[0] : 22) << text;
        const bool is_pure = operators.empty() || (operators.size() == 1 && operators[0] == 2);
        EXPECT_EQ(f.root->issubtreepure(BOOL_OP_OR), is_pure) << text;
        const bool is_one = f.islogic1();
        EXPECT_EQ(is_one, shape(f) == "1");
        EXPECT_EQ(f.islogic0(), shape(f) == "0");
        EXPECT_EQ(f.nsuppt, f.countsuppt());
    });
}

TEST(values, edits_by_signal)
{
    for_random_functions(false, [](BOOL_FUNC& f, auto& random) {
        const unsigned i = random() % signals;
        const unsigned j = random() % signals;
        TECHMAP_SIG* const sig = signal(i);
        BOOL_FUNC other;
        other.root = random_tree(random, tree_kind());
        other.rootcompl = random() % 2;
        const std::string complement{'~', static_cast<char>('a' + i)};
        const std::string renamed(1, static_cast<char>('a' + j));
        const struct {
            std::function<void()> run;
            truth_column values; // of what takes the signal's place
        } edits[] = {
            {[&] { i < j ? f.setsigto1(sig) : f.root->setsigto1(sig); },
             column(parsed_func("1"), signals)},
            {[&] { i < j ? f.setsigto0(sig) : f.root->setsigto0(sig); },
             column(parsed_func("0"), signals)},
            {[&] { f.complsiginfunc(sig); }, column(parsed_func(complement.c_str()), signals)},
            {[&] { f.subsig1forsig2(signal(j), sig); },
             column(parsed_func(renamed.c_str()), signals)},
            {[&] { f.substfnforsig(sig, &other); }, column(other, signals)},
        };
        const truth_column before = column(f, signals);
        const std::size_t kind = random() % std::size(edits);
        edits[kind].run();
        const truth_column after = column(f, signals);
        for (unsigned at = 0; at < after.size(); ++at) {
            const unsigned source = (at & ~(1U << i)) | unsigned{edits[kind].values[at]} << i;
            EXPECT_EQ(after[at], before[source]) << kind << ": " << shape(f);
        }
        f.root->rmsigfromtree(signal(j)); // shared leaves too
        EXPECT_TRUE(basbd_is_leaf(*f.root) || !f.root->issiginsuppt(signal(j)));
    });
}

TEST(values, questions)
{
    for_random_functions(true, [](BOOL_FUNC& f, auto& random) {
        const auto name = static_cast<BOOL_VARNAME>(random() % signals);
        TECHMAP_SIG* const sig = signal(static_cast<unsigned>(name));
        f.root->unmarknodes();
        f.root->markusage();
        path_counts counts;
        count_paths(f.root, counts);
        std::set<TECHMAP_SIG*> support;
        unsigned leaves = 0;
        for (const auto& [node, count] : counts) {
            EXPECT_EQ(node->usage, count);
            if (basbd_is_leaf(*node)) {
                support.insert(basbd_leaf_signal(*node));
                leaves += count;
            }
        }
        support.erase(nullptr);
        const bool occurs = support.count(sig) != 0;
        EXPECT_EQ(f.root->countleaves(), leaves);
        EXPECT_EQ(f.countsuppt(), support.size());
        EXPECT_EQ(f.root->issiginsuppt(sig), occurs);
        EXPECT_EQ(f.root->isvarinsuppt(name), occurs);
        EXPECT_EQ(f.getvarname(sig), occurs ? name : BOOL_VAR_NONE);
        EXPECT_EQ(f.root->issigcompl(sig), !basbd_is_leaf(*f.root) && last_edge_flag(f.root, sig));
        f.root->reclaim();
        delete std::exchange(f.root, nullptr);
    });
}

TEST(values, support_of_many_signals_counts_twenty)
{
    BOOL_FUNC function(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A);
    for (unsigned i = 0; i < 22; ++i) {
        function.addsigtofunc(signal(i), 0);
        EXPECT_EQ(function.nsuppt, i + 1);
        EXPECT_EQ(function.countsuppt(), std::min(i + 1, 20U));
    }
    function.setsigto0(signal(4));
    EXPECT_EQ(function.nsuppt, 20);
    parsed_func other("*(a,~z)");
    EXPECT_EQ(other.countsupptunion(&function), 20);
    parsed_func one_more("*(a,c)");
    EXPECT_EQ(other.countsupptunion(&one_more), 3);
    EXPECT_EQ(other.countsupptunion(nullptr), 2);
    TECHMAP_SIG* list[20] = {signal(0)};
    one_more.root->listsigs(list);
    EXPECT_EQ(list[1], signal(2));
    EXPECT_EQ(list[2], nullptr);
}
