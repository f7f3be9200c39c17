#include "bdd_oracle.h"
#include "host_recorder.h"

#include <gtest/gtest.h>

using bdd_oracle::MANAGER;
using bdd_oracle::negate;

namespace {

constexpr BDD_STORE_METHOD stores[] = {BDD_STORE_HASH, BDD_STORE_TREE, BDD_STORE_METHOD(7)};

/// Lets a new manager count its nodes.
const int& count_nodes(MANAGER& m)
{
    struct COUNTING_STORE final : BDD_HASH {
        int nodes = 0;
        void* s_add(const void* key, void* data) override
        {
            ++nodes;
            return BDD_HASH::s_add(key, data);
        }
    };
    delete m.bdds.table->store;
    auto* const store = new COUNTING_STORE;
    m.bdds.table->store = store;
    return store->nodes;
}

class stores_test : public testing::TestWithParam<BDD_STORE_METHOD> {
protected:
    MANAGER manager{GetParam(), 3};
    std::vector<BDD_NODE*> functions;

    /// functions[i] is the function of three variables whose column is i.
    void SetUp() override
    {
        for (unsigned byte = 0; byte < 256; ++byte) {
            functions.push_back(manager.function(byte));
        }
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(each, stores_test, testing::ValuesIn(stores));

TEST_P(stores_test, every_function_has_one_canonical_edge)
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        EXPECT_TRUE(bdd_oracle::is_canonical(functions[byte])) << byte;
        for (unsigned i = 0; i < 8; ++i) {
            EXPECT_EQ(bdd_oracle::evaluate(functions[byte], i), (byte >> i & 1U) != 0) << byte;
        }
        EXPECT_EQ(functions[255 - byte], negate(functions[byte]));
    }
}

TEST_P(stores_test, if_then_else_is_that_of_the_columns)
{
    // Every f and g meets 0, 1, f, g, their complements, which is where the standard triples are,
    // and a grid.
    const unsigned grid[] = {0, 255, 0x0F, 0x33, 0xAA, 0x96, 0x69, 0x80, 0xE8, 0x1B, 0xD7};
    for (unsigned f = 0; f < 256; ++f) {
        for (unsigned other = 0; other < 256; ++other) {
            std::vector<unsigned> thirds(std::begin(grid), std::end(grid));
            thirds.insert(thirds.end(), {f, 255 - f, other, 255 - other});
            for (const unsigned third : thirds) {
                for (const auto& [g, h] : {std::pair(other, third), std::pair(third, other)}) {
                    const unsigned expected = (f & g) | (~f & h & 255U);
                    ASSERT_EQ(manager.bdds.ifthenelse(functions[f], functions[g], functions[h]),
                              functions[expected])
                        << f << " " << g << " " << h;
                }
            }
        }
    }
}

TEST_P(stores_test, compose_is_that_of_the_columns)
{
    const unsigned variables[] = {0xAA, 0xCC, 0xF0};
    for (unsigned f = 0; f < 256; ++f) {
        ASSERT_EQ(manager.bdds.compose(functions[f], 0xFFFF, functions[255 - f]), functions[f]);
        for (unsigned short var = 0; var < 3; ++var) {
            const unsigned x = variables[var];
            const unsigned shift = 1U << var;
            const unsigned high = (f & x) | (f & x) >> shift;
            const unsigned low = (f & ~x) | (f & ~x) << shift;
            for (unsigned g = 0; g < 256; ++g) {
                ASSERT_EQ(manager.bdds.compose(functions[f], var, functions[g]),
                          functions[((high & g) | (low & ~g)) & 255U])
                    << f << " " << var << " " << g;
            }
        }
    }
}

TEST(manager, makes_the_nodes_of_the_definitions_and_no_other)
{
    constexpr unsigned variables = 10;
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        MANAGER fast(BDD_STORE_HASH, variables);
        MANAGER plain(BDD_STORE_HASH, variables);
        const int& fast_nodes = count_nodes(fast);
        const int& plain_nodes = count_nodes(plain);
        std::vector<std::pair<BDD_NODE*, BDD_NODE*>> made;
        for (unsigned i = 0; i < variables; ++i) {
            made.emplace_back(fast.variable(i), plain.variable(i));
        }
        const auto any = [&] {
            const auto recent = std::min<std::size_t>(made.size(), 16);
            auto [a, b] = made[made.size() - 1 - random() % recent];
            return random() % 2 == 0 ? std::pair(a, b) : std::pair(negate(a), negate(b));
        };
        for (unsigned step = 0; step < 60; ++step) {
            const auto [f, plain_f] = any();
            const auto [g, plain_g] = any();
            const auto [h, plain_h] = any();
            const auto var = static_cast<unsigned short>(random() % variables);
            const bool composes = step % 3 == 0;
            const auto define = [&](MANAGER& m, BDD_NODE* a, BDD_NODE* b, BDD_NODE* c) {
                return composes ? bdd_oracle::compose(m.bdds, a, var, b)
                                : bdd_oracle::ifthenelse(m.bdds, a, b, c);
            };
            made.emplace_back(composes ? fast.bdds.compose(f, var, g)
                                       : fast.bdds.ifthenelse(f, g, h),
                              define(plain, plain_f, plain_g, plain_h));
            ASSERT_EQ(fast_nodes, plain_nodes);
            ASSERT_EQ(define(fast, f, g, h), made.back().first);
            ASSERT_EQ(fast_nodes, plain_nodes) << "the definition needs other nodes";
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
    MANAGER third(BDD_STORE_HASH, 5);
    third.bdds.varsigs[4] = third.signals[3];
    EXPECT_EQ(third.bdds.sig2varid(third.signals[3]), 3) << "the first of a signal's variables";
    EXPECT_EQ(third.bdds.sig2varid(third.signals[4]), 0xFFFF);
}

TEST(manager, has_no_nodes_for_foreign_variables)
{
    MANAGER small(BDD_STORE_HASH, 1);
    MANAGER large(BDD_STORE_HASH, 3);
    BDD_NODE* const a = small.variable(0);
    BDD_NODE* const c = large.variable(2);
    BDD_NODE* const foreign = large.bdds.ifthenelse(large.variable(1), c, basbdd_zero);
    EXPECT_EQ(small.bdds.ifthenelse(foreign, basbdd_zero, basbdd_one), negate(foreign));
    EXPECT_EQ(small.bdds.ifthenelse(foreign, negate(c), basbdd_one), nullptr);
    EXPECT_EQ(small.bdds.compose(foreign, 2, a), nullptr);
    EXPECT_EQ(small.bdds.compose(a, 0, nullptr), nullptr);
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
