/// @file
/// @brief The engines that the BDD sections of the benchmark compare.
///
/// BuDDy is set up as its manual advises a user who does not know the number of nodes beforehand:
/// bdd_init(100000, 10000) for the circuits and for the one manager of all cells, the manual's
/// medium size, and bdd_init(1000, 100) for a manager per cell, its smallest. Growing and garbage
/// collection stay as they are by default, so functions are held by the class `bdd`, which counts
/// references.
#pragma once

#include "basbd_engine.h"
#include "harness.h"

#include <bdd.h>

#include <cstdlib>

/// Fails loudly: a ratio of unequal work means nothing.
inline void check(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

/// The arguments of bdd_init.
struct table_sizes {
    int nodes;
    int cache;
};
constexpr table_sizes small_sizes = {1000, 100};
constexpr table_sizes medium_sizes = {100000, 10000};

/// @brief basbd with one of its stores.
template <int store>
struct basbd_with : basbd_engine {
    explicit basbd_with(unsigned variables, table_sizes /*of BuDDy's tables*/ = {})
        : basbd_engine(BDD_STORE_METHOD(store), variables)
    {
    }
};

/// How BuDDy is asked for AND, OR and XOR.
enum class calls { ite, apply };

/// @brief BuDDy behind the same operations.
template <calls used = calls::ite>
class buddy_engine {
public:
    using edge = bdd;

    buddy_engine(unsigned variables, table_sizes sizes)
    {
        bdd_init(sizes.nodes, sizes.cache);
        bdd_setvarnum(static_cast<int>(variables));
        bdd_gbc_hook(nullptr); // the default one prints
    }
    buddy_engine(const buddy_engine&) = delete;
    buddy_engine& operator=(const buddy_engine&) = delete;
    ~buddy_engine() { bdd_done(); }

    edge constant(bool value) { return value ? bdd_true() : bdd_false(); }
    edge variable(unsigned i) { return bdd_ithvar(static_cast<int>(i)); }
    edge negate(const edge& f) { return bdd_not(f); }
    edge conjunction(const edge& f, const edge& g)
    {
        return used == calls::ite ? bdd_ite(f, g, bdd_false()) : bdd_and(f, g);
    }
    edge disjunction(const edge& f, const edge& g)
    {
        return used == calls::ite ? bdd_ite(f, bdd_true(), g) : bdd_or(f, g);
    }
    edge parity(const edge& f, const edge& g)
    {
        return used == calls::ite ? bdd_ite(f, bdd_not(g), g) : bdd_xor(f, g);
    }
    edge choice(const edge& f, const edge& g, const edge& h) { return bdd_ite(f, g, h); }
    edge cofactor(const edge& f, unsigned i, bool value)
    {
        const int var = static_cast<int>(i);
        return bdd_restrict(f, value ? bdd_ithvar(var) : bdd_nithvar(var));
    }
    edge compose(const edge& f, unsigned i, const edge& g)
    {
        return bdd_compose(f, g, static_cast<int>(i));
    }
    double models(const edge& f) { return bdd_satcount(f); }
};

template <typename engine_type>
struct contender {
    using type = engine_type;
};

/// A row for comparison, which has no goal.
inline void print_extra(const char* name, const std::vector<double>& ratios)
{
    std::printf("%-44s %8.2f\n", name, bench::geometric_mean(ratios));
}
