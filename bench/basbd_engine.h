/// @file
/// @brief The library as an engine of circuits.
#pragma once

#include "basbdd.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <map>

/// The complement of an edge.
inline BDD_NODE* negate(BDD_NODE* e)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the mark is a bit of the address
    return reinterpret_cast<BDD_NODE*>(reinterpret_cast<std::uintptr_t>(e) ^ 1U);
}

/// The share of the assignments for which an edge is 1. `shares` holds those that are known.
inline double share_of_ones(BDD_NODE* e, std::map<BDD_NODE*, double>& shares)
{
    const auto known = shares.find(e);
    if (known != shares.end()) {
        return known->second;
    }
    const bool is_marked = (reinterpret_cast<std::uintptr_t>(e) & 1U) != 0;
    const BDD_NODE* const top = is_marked ? negate(e) : e;
    // No share is subtracted from another: that would lose digits.
    const auto share = [&](BDD_NODE* child) {
        return share_of_ones(is_marked ? negate(child) : child, shares);
    };
    const double both = share(top->high) + share(top->low);
    return shares[e] = both / 2;
}

/// Assignments of `variables` variables with the value 1.
inline double count_models(BDD_NODE* e, unsigned variables)
{
    std::map<BDD_NODE*, double> shares{{basbdd_one, 1.0}, {basbdd_zero, 0.0}};
    return std::ldexp(share_of_ones(e, shares), static_cast<int>(variables));
}

/// @brief A manager over signals that stand for numbers.
class basbd_engine {
public:
    using edge = BDD_NODE*;

    basbd_engine(BDD_STORE_METHOD method, unsigned variables)
        : manager(method, static_cast<unsigned short>(variables), order(variables).data())
    {
        for (unsigned i = 0; i < variables; ++i) {
            variable_nodes[i] = node(static_cast<unsigned short>(i), basbdd_one, basbdd_zero);
        }
    }

    edge constant(bool value) { return value ? basbdd_one : basbdd_zero; }
    edge variable(unsigned i) { return variable_nodes[i]; } // kept, as other engines keep them
    edge node(unsigned short var, edge high, edge low)
    {
        return manager.table->findoradd(var, high, low);
    }
    edge negate(edge f) { return ::negate(f); }
    edge conjunction(edge f, edge g) { return manager.ifthenelse(f, g, basbdd_zero); }
    edge disjunction(edge f, edge g) { return manager.ifthenelse(f, basbdd_one, g); }
    edge parity(edge f, edge g) { return manager.ifthenelse(f, negate(g), g); }
    edge choice(edge f, edge g, edge h) { return manager.ifthenelse(f, g, h); }
    edge cofactor(edge f, unsigned i, bool value) { return compose(f, i, constant(value)); }
    edge compose(edge f, unsigned i, edge g)
    {
        return manager.compose(f, static_cast<unsigned short>(i), g);
    }
    const BDD_TABLE& table() const { return *manager.table; }
    double models(edge f) { return count_models(f, manager.nvars); }

private:
    static constexpr unsigned max_variables = 512;

    static std::array<TECHMAP_SIG*, max_variables> order(unsigned variables)
    {
        static char signals[max_variables];          // the library never looks inside a signal
        std::array<TECHMAP_SIG*, max_variables> all; // NOLINT: only what is used is filled
        for (unsigned i = 0; i < variables; ++i) {
            all[i] = reinterpret_cast<TECHMAP_SIG*>(&signals[i]);
        }
        return all;
    }

    BDD_MANAGER manager;
    edge variable_nodes[max_variables];
};
