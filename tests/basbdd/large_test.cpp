#include "bdd_oracle.h"

#include <gtest/gtest.h>

#include <cmath>

using bdd_oracle::MANAGER;
using bdd_oracle::negate;

namespace {

class large : public testing::TestWithParam<BDD_STORE_METHOD> {};

/// The tree x0 op (x1 op (x2 op ...)) over the manager's variables.
struct CHAIN : BOOL_FUNC {
    CHAIN(const MANAGER& m, BOOL_OP op)
    {
        const auto leaf = [](TECHMAP_SIG* sig) { return new BOOL_TNODE(BOOL_OP_SIG, sig); };
        root = leaf(m.signals.back());
        for (std::size_t i = m.signals.size() - 1; i-- > 0;) {
            root = new BOOL_TNODE(static_cast<char>(op), leaf(m.signals[i]), 0, root, 0);
        }
    }
};

/// The placements of n queens, row by row: none, or one that nothing above it attacks.
BDD_NODE* queens(MANAGER& m, int n)
{
    const auto attacks = [n](int a, int b) {
        const int rows = a / n - b / n;
        const int columns = a % n - b % n;
        return a != b && (rows * columns == 0 || rows == columns || rows == -columns);
    };
    BDD_NODE* all = basbdd_one;
    for (int row = n; row-- > 0;) {
        BDD_NODE* one = basbdd_zero;
        for (int a = row * n; a < row * n + n; ++a) {
            BDD_NODE* placed = m.variable(static_cast<unsigned>(a));
            for (int b = 0; b < n * n; ++b) {
                if (attacks(a, b)) {
                    BDD_NODE* const other = m.variable(static_cast<unsigned>(b));
                    placed = m.bdds.ifthenelse(placed, negate(other), basbdd_zero);
                }
            }
            one = m.bdds.ifthenelse(one, basbdd_one, placed);
        }
        all = m.bdds.ifthenelse(all, one, basbdd_zero);
    }
    return all;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(each, large, testing::Values(BDD_STORE_HASH, BDD_STORE_TREE));

TEST_P(large, queens)
{
    for (const auto& [n, solutions] : {std::pair(6, 4), std::pair(7, 40), std::pair(8, 92)}) {
        const auto squares = static_cast<unsigned>(n * n);
        MANAGER m(GetParam(), squares);
        EXPECT_EQ(bdd_oracle::count_models(queens(m, n), squares), solutions);
    }
}

TEST_P(large, carry_of_256_bits)
{
    MANAGER m(GetParam(), 512);
    BDD_NODE* carry = basbdd_zero;
    for (unsigned i = 512; i > 0; i -= 2) { // the least significant bits are the lowest variables
        BDD_NODE* const a = m.variable(i - 2);
        BDD_NODE* const b = m.variable(i - 1);
        BDD_NODE* const either = m.bdds.ifthenelse(a, basbdd_one, b);
        carry = m.bdds.ifthenelse(m.bdds.ifthenelse(a, b, basbdd_zero), basbdd_one,
                                  m.bdds.ifthenelse(either, carry, basbdd_zero));
    }
    // Of all pairs of numbers, half but for the share of those whose sum has only ones.
    EXPECT_EQ(std::ldexp(bdd_oracle::count_models(carry, 512), -512), 0.5 - std::ldexp(1.0, -257));
}

TEST_P(large, parity_of_2000_variables_in_both_directions)
{
    MANAGER m(GetParam(), 2001);
    m.bdds.varsigs[2000] = m.signals[1000]; // which has its variable already
    m.signals.pop_back();
    CHAIN tree(m, BOOL_OP_XOR);
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
    MANAGER m(GetParam(), n);
    CHAIN tree(m, BOOL_OP_AND);
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

TEST_P(large, subtrees_on_many_paths_are_converted_once)
{
    MANAGER m(GetParam(), 3);
    CHAIN tree(m, BOOL_OP_XOR);
    for (int i = 0; i < 14; ++i) { // usage counts the paths in 16 bits
        tree.root = new BOOL_TNODE(BOOL_OP_AND, tree.root, 0, tree.root, 0);
    }
    BDD_FUNC f(3, &tree, &m.bdds, nullptr);
    EXPECT_EQ(bdd_oracle::count_models(f.bdd, 3), 4);
}
