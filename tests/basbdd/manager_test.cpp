#include "host_recorder.h"
#include "recording_store.h"

#include <algorithm>

using bdd_oracle::own_manager;
using bdd_oracle::record_store;
using bdd_oracle::store_record;

namespace {

/// An edge of the manager under test, and one of the same function in a manager that only the
/// definitions work on.
struct twins {
    BDD_NODE* tested;
    BDD_NODE* defined;
};

class twin_managers {
public:
    twin_managers(BDD_STORE_METHOD method, unsigned variables)
        : tested(method, variables), defined(method, variables)
    {
        const auto record =
            method == BDD_STORE_HASH ? record_store<BDD_HASH> : record_store<BDD_TREE>;
        tested_record = &record(tested.bdds);
        defined_record = &record(defined.bdds);
        for (unsigned i = 0; i < variables; ++i) {
            made.push_back({tested.variable(i), defined.variable(i)});
        }
    }

    /// A recent function or its complement.
    template <typename generator>
    twins any(generator& random) const
    {
        const auto recent = std::min<std::size_t>(made.size(), 16);
        const twins f = made[made.size() - 1 - random() % recent];
        return random() % 2 == 0 ? f : twins{negate(f.tested), negate(f.defined)};
    }
    BDD_NODE* ifthenelse(twins f, twins g, twins h)
    {
        made.push_back({tested.bdds.ifthenelse(f.tested, g.tested, h.tested),
                        bdd_oracle::ifthenelse(defined.bdds, f.defined, g.defined, h.defined)});
        return made.back().tested;
    }
    BDD_NODE* compose(twins f, unsigned short var, twins g)
    {
        made.push_back({tested.bdds.compose(f.tested, var, g.tested),
                        bdd_oracle::compose(defined.bdds, f.defined, var, g.defined)});
        return made.back().tested;
    }
    bool have_made_the_same_nodes() const { return tested_record->nodes == defined_record->nodes; }

private:
    own_manager tested;
    own_manager defined;
    const store_record* tested_record;
    const store_record* defined_record;
    std::vector<twins> made{{basbdd_one, basbdd_one}};
};

} // namespace

TEST(manager, gives_the_values_and_makes_the_nodes_of_the_definitions_in_their_order)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const unsigned variables = 2 + seed / 2 % 8;
        twin_managers managers(BDD_STORE_METHOD(seed % 2), variables);
        for (unsigned step = 0; step < 60; ++step) {
            const twins f = managers.any(random);
            const twins g = managers.any(random);
            const twins h = managers.any(random);
            const auto var = static_cast<unsigned short>(random() % (variables + 1));
            const bool composes = step % 3 == 0;
            BDD_NODE* const result =
                composes ? managers.compose(f, var, g) : managers.ifthenelse(f, g, h);
            ASSERT_TRUE(managers.have_made_the_same_nodes());
            ASSERT_TRUE(bdd_oracle::is_canonical(result));
            for (unsigned at = 0; at < 1U << variables; ++at) {
                const auto value = [](twins of, unsigned assignment) {
                    return bdd_oracle::evaluate(of.tested, assignment);
                };
                const unsigned put = (at & ~(1U << var)) | (value(g, at) ? 1U << var : 0U);
                const bool expected = composes ? value(f, put) : value(value(f, at) ? g : h, at);
                ASSERT_EQ(bdd_oracle::evaluate(result, at), expected) << at;
            }
        }
    }
}

TEST(manager, keeps_the_constants_for_good)
{
    {
        own_manager first(BDD_STORE_HASH, 1);
    }
    BDD_NODE* const one = basbdd_one;
    own_manager second(BDD_STORE_TREE, 0);
    second.bdds.mkconstants();
    EXPECT_EQ(host_recorder::take_report_lines(), std::vector<int>{375});
    EXPECT_EQ(basbdd_one, one);
    EXPECT_EQ(basbdd_zero, negate(one));
    EXPECT_EQ(second.bdds.sig2varid(nullptr), 0xFFFF);
    EXPECT_EQ(second.bdds.compose(one, 0xFFFF, negate(one)), one);
    own_manager third(BDD_STORE_HASH, 5);
    third.bdds.varsigs[4] = third.signals[3];
    EXPECT_EQ(third.bdds.sig2varid(third.signals[3]), 3) << "the first of a signal's variables";
    EXPECT_EQ(third.bdds.sig2varid(third.signals[4]), 0xFFFF);
}

TEST(manager, has_no_nodes_for_foreign_variables)
{
    own_manager small(BDD_STORE_HASH, 1);
    own_manager large(BDD_STORE_HASH, 3);
    BDD_NODE* const b = large.variable(1);
    BDD_NODE* const c = large.variable(2);
    BDD_NODE* const both = bdd_oracle::ifthenelse(large.bdds, b, c, basbdd_zero);
    BDD_NODE* const all = bdd_oracle::ifthenelse(large.bdds, large.variable(0), both, basbdd_zero);
    const struct {
        BDD_NODE* f;
        BDD_NODE* g;
        BDD_NODE* h;
        BDD_NODE* result;
    } cases[] = {
        {both, basbdd_zero, basbdd_one, negate(both)},
        {basbdd_one, c, nullptr, c},
        {basbdd_zero, nullptr, c, c},
        {c, nullptr, b, nullptr},
        {b, c, basbdd_zero, nullptr},
        {both, negate(c), basbdd_one, nullptr},
        {both, negate(c), c, nullptr},
        {all, negate(c), basbdd_one, nullptr},
    };
    for (const auto& [f, g, h, result] : cases) {
        EXPECT_EQ(small.bdds.ifthenelse(f, g, h), result);
    }
    EXPECT_EQ(small.bdds.compose(both, 2, b), nullptr);
    EXPECT_EQ(small.bdds.compose(both, 2, c), nullptr);
    EXPECT_EQ(small.bdds.compose(c, 2, nullptr), nullptr);
}
