#include "bdd_oracle.h"
#include "host_recorder.h"

#include <gtest/gtest.h>

#include <array>
#include <map>

using bdd_oracle::MANAGER;

namespace {

/// The nodes of a manager in the order in which they were made, each with its children's places in
/// that order and their marks.
using HISTORY = std::vector<std::array<std::size_t, 3>>;

/// Lets a new manager, which has a store of that class, keep the history of its nodes.
template <typename STORE>
const HISTORY& record_nodes(MANAGER& m)
{
    struct RECORDING_STORE final : STORE {
        HISTORY history;
        std::map<BDD_NODE*, std::size_t> places{{basbdd_one, 0}};
        void* s_add(const void* key, void* data) override
        {
            auto* const made = static_cast<BDD_NODE*>(const_cast<void*>(key));
            const auto place = [&](BDD_NODE* e) {
                return 2 * places.at(bdd_oracle::node(e)) + (bdd_oracle::is_marked(e) ? 1 : 0);
            };
            history.push_back({made->varid, place(made->high), place(made->low)});
            places.emplace(made, history.size());
            return STORE::s_add(key, data);
        }
    };
    delete m.bdds.table->store;
    auto* const store = new RECORDING_STORE;
    m.bdds.table->store = store;
    return store->history;
}

/// Edges of one function in two managers.
struct TWINS {
    BDD_NODE* fast;
    BDD_NODE* plain;
};

} // namespace

TEST(manager, gives_the_values_and_makes_the_nodes_of_the_definitions_in_their_order)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const unsigned variables = 2 + seed / 2 % 8;
        const auto method = BDD_STORE_METHOD(seed % 2);
        MANAGER fast(method, variables);
        MANAGER plain(method, variables);
        const auto record =
            method == BDD_STORE_HASH ? record_nodes<BDD_HASH> : record_nodes<BDD_TREE>;
        const HISTORY& fast_nodes = record(fast);
        const HISTORY& plain_nodes = record(plain);
        std::vector<TWINS> made{{basbdd_one, basbdd_one}};
        for (unsigned i = 0; i < variables; ++i) {
            made.push_back({fast.variable(i), plain.variable(i)});
        }
        const auto any = [&] {
            const auto recent = std::min<std::size_t>(made.size(), 16);
            const TWINS f = made[made.size() - 1 - random() % recent];
            return random() % 2 == 0 ? f : TWINS{negate(f.fast), negate(f.plain)};
        };
        for (unsigned step = 0; step < 60; ++step) {
            const TWINS f = any();
            const TWINS g = any();
            const TWINS h = any();
            const auto var = static_cast<unsigned short>(random() % (variables + 1));
            const bool composes = step % 3 == 0;
            const TWINS result =
                composes ? TWINS{fast.bdds.compose(f.fast, var, g.fast),
                                 bdd_oracle::compose(plain.bdds, f.plain, var, g.plain)}
                         : TWINS{fast.bdds.ifthenelse(f.fast, g.fast, h.fast),
                                 bdd_oracle::ifthenelse(plain.bdds, f.plain, g.plain, h.plain)};
            ASSERT_EQ(fast_nodes, plain_nodes);
            ASSERT_TRUE(bdd_oracle::is_canonical(result.fast));
            for (unsigned at = 0; at < 1U << variables; ++at) {
                const bool chosen = bdd_oracle::evaluate(g.fast, at);
                const unsigned put = (at & ~(1U << var)) | (chosen ? 1U << var : 0);
                const bool expected = composes ? bdd_oracle::evaluate(f.fast, put)
                                      : bdd_oracle::evaluate(f.fast, at)
                                          ? chosen
                                          : bdd_oracle::evaluate(h.fast, at);
                ASSERT_EQ(bdd_oracle::evaluate(result.fast, at), expected) << at;
            }
            made.push_back(result);
        }
    }
}

TEST(manager, keeps_the_constants_for_good)
{
    {
        MANAGER first(BDD_STORE_HASH, 1);
    }
    BDD_NODE* const one = basbdd_one;
    MANAGER second(BDD_STORE_TREE, 0);
    second.bdds.mkconstants();
    EXPECT_EQ(host_recorder::take_report_lines(), std::vector<int>{375});
    EXPECT_EQ(basbdd_one, one);
    EXPECT_EQ(basbdd_zero, negate(one));
    EXPECT_EQ(second.bdds.sig2varid(nullptr), 0xFFFF);
    EXPECT_EQ(second.bdds.compose(one, 0xFFFF, negate(one)), one);
    MANAGER third(BDD_STORE_HASH, 5);
    third.bdds.varsigs[4] = third.signals[3];
    EXPECT_EQ(third.bdds.sig2varid(third.signals[3]), 3) << "the first of a signal's variables";
    EXPECT_EQ(third.bdds.sig2varid(third.signals[4]), 0xFFFF);
}

TEST(manager, has_no_nodes_for_foreign_variables)
{
    MANAGER small(BDD_STORE_HASH, 1);
    MANAGER large(BDD_STORE_HASH, 3);
    BDD_NODE* const b = large.variable(1);
    BDD_NODE* const c = large.variable(2);
    BDD_NODE* const both = bdd_oracle::ifthenelse(large.bdds, b, c, basbdd_zero);
    BDD_NODE* const all = bdd_oracle::ifthenelse(large.bdds, large.variable(0), both, basbdd_zero);
    const auto ite = [&](auto... operands) { return small.bdds.ifthenelse(operands...); };
    EXPECT_EQ(ite(both, basbdd_zero, basbdd_one), negate(both));
    EXPECT_EQ(ite(basbdd_one, c, nullptr), c);
    EXPECT_EQ(ite(basbdd_zero, nullptr, c), c);
    EXPECT_EQ(ite(c, nullptr, b), nullptr);
    EXPECT_EQ(ite(b, c, basbdd_zero), nullptr);
    EXPECT_EQ(ite(both, negate(c), basbdd_one), nullptr);
    EXPECT_EQ(ite(both, negate(c), c), nullptr);
    EXPECT_EQ(ite(all, negate(c), basbdd_one), nullptr);
    EXPECT_EQ(small.bdds.compose(both, 2, b), nullptr);
    EXPECT_EQ(small.bdds.compose(both, 2, c), nullptr);
    EXPECT_EQ(small.bdds.compose(c, 2, nullptr), nullptr);
}

TEST(table, hashes_and_orders_by_edges_with_their_marks)
{
    BDD_HASH hash;
    BDD_TREE tree;
    BDD_NODE high;
    BDD_NODE low;
    BDD_NODE nodes[] = {{1, &high, &low}, {1, &high, negate(&low)}, {2, nullptr, nullptr}};
    const auto value = bdd_oracle::bits(&high) / 8 + 2 * (bdd_oracle::bits(&low) + 1) + 1;
    EXPECT_EQ(hash.hash_func(&nodes[1]), static_cast<unsigned>(value));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            const int expected = i == j ? 0 : i < j ? -1 : 1;
            EXPECT_EQ(hash.comp_func(&nodes[i], &nodes[j]), expected);
            const void* entry = &nodes[j];
            EXPECT_EQ(tree.comp_func(&nodes[i], static_cast<const char*>(entry)), expected);
        }
    }
}

TEST(table, keeps_nodes_of_others_when_its_flag_is_cleared)
{
    BDD_NODE own(3);
    BDD_HASH hash;
    hash.s_add(&own, nullptr);
    hash.flag = 0;
}
