#include "bdd_oracle.h"
#include "circuits.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

using bdd_oracle::own_manager;

namespace {

/// On a stack of 8 MiB, whatever the shell allows.
class large : public testing::TestWithParam<BDD_STORE_METHOD> {
protected:
    static void SetUpTestSuite()
    {
        constexpr rlimit size = {8U << 20U, 8U << 20U};
        ASSERT_EQ(setrlimit(RLIMIT_STACK, &size), 0);
    }
};

/// The tree x0 op (x1 op (x2 op ...)) over the manager's variables.
struct chain : BOOL_FUNC {
    chain(const own_manager& m, BOOL_OP op)
    {
        const auto leaf = [](TECHMAP_SIG* sig) { return new BOOL_TNODE(BOOL_OP_SIG, sig); };
        root = leaf(m.signals.back());
        for (std::size_t i = m.signals.size() - 1; i-- > 0;) {
            root = new BOOL_TNODE(static_cast<char>(op), leaf(m.signals[i]), 0, root, 0);
        }
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(each, large, testing::Values(BDD_STORE_HASH, BDD_STORE_TREE));

/// Solutions of size queens.
template <unsigned size>
double solutions(BDD_STORE_METHOD method)
{
    basbd_engine e(method, size * size);
    return e.models(queens<size>::build(e).front());
}

TEST_P(large, queens)
{
    EXPECT_EQ(solutions<6>(GetParam()), 4);
    EXPECT_EQ(solutions<7>(GetParam()), 40);
    EXPECT_EQ(solutions<8>(GetParam()), 92);
}

TEST_P(large, parity_of_2000_variables_in_both_directions)
{
    own_manager m(GetParam(), 2001);
    m.bdds.varsigs[2000] = m.signals[1000]; // which has its variable already
    m.signals.pop_back();
    chain tree(m, BOOL_OP_XOR);
    BDD_FUNC downwards(2000, &tree, &m.bdds, nullptr);
    EXPECT_EQ(downwards.nsuppt, 2000);
    BDD_NODE* upwards = basbdd_zero;
    for (unsigned i = 0; i < 2000; ++i) {
        BDD_NODE* const x = m.variable(i);
        upwards = m.bdds.ifthenelse(x, negate(upwards), upwards);
    }
    EXPECT_EQ(upwards, downwards.bdd);
}

TEST_P(large, conjunction_of_65535_variables)
{
    constexpr unsigned n = 65535;
    own_manager m(GetParam(), n);
    chain tree(m, BOOL_OP_AND);
    BDD_FUNC f(n, &tree, &m.bdds, nullptr);
    EXPECT_EQ(f.nsuppt, n);
    EXPECT_EQ(f.suppt[n - 1], n - 1);
    f.complsiginfn(m.signals[n - 1]);
    f.setsigto1(m.signals[7]);
    EXPECT_EQ(f.nsuppt, n - 1);
    std::string names(n, 'x');
    std::string text(std::size_t{6} * n, ' ');
    f.printbddexpr(text.data(), names.data());
    EXPECT_EQ(text.substr(0, 8), "~(x?(x?(");
}
