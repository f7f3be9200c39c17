#include "recording_store.h"

#include <algorithm>
#include <cstdlib>

using bdd_oracle::support_of;
using tree_oracle::parsed_func;
using tree_oracle::signal;

/// In a process that has made no manager.
TEST(conversion, makes_the_constants_that_it_needs)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto is_zero = [](const BDD_FUNC& f) {
        std::exit(basbdd_one != nullptr && f.bdd == basbdd_zero ? 0 : 1);
    };
    EXPECT_EXIT(is_zero({0, nullptr, nullptr, nullptr}), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(is_zero(BDD_FUNC(nullptr)), testing::ExitedWithCode(0), "");
}

TEST(conversion, solves_nothing_twice)
{
    const auto searches = [](const std::string& text) {
        TECHMAP_SIG* order[16];
        std::generate_n(order, 16, [i = 0U]() mutable { return signal(i++); });
        BDD_MANAGER manager(BDD_STORE_HASH, 16, order);
        const auto& record = bdd_oracle::record_store<BDD_HASH>(manager);
        parsed_func tree(text.c_str());
        const BDD_FUNC converted(16, &tree, &manager, nullptr);
        return static_cast<double>(record.searches);
    };
    const auto sum_of_pairs = [](int step) {
        std::string sum = "0";
        for (int i = 0; i < 8; ++i) {
            const char pair[] = {'*', '(', char('a' + i), ',', char('i' + i * step % 8), ')', '\0'};
            sum.insert(0, std::string("+(") + pair + ",").append(")");
        }
        return sum;
    };
    const std::string product = "*(" + sum_of_pairs(1) + "," + sum_of_pairs(3) + ")";
    EXPECT_LT(searches("@(" + product + "," + product + ")"), 1.1 * searches(product));
}

TEST(conversion, and_edits_agree_with_the_tree_evaluator)
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
        tree_oracle::tree_kind shapes;
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
