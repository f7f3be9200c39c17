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
class BASBD_ENGINE {
public:
    using EDGE = BDD_NODE*;

    BASBD_ENGINE(BDD_STORE_METHOD method, unsigned variables)
        : manager_(method, static_cast<unsigned short>(variables), order(variables).data())
    {
        for (unsigned i = 0; i < variables; ++i) {
            variables_[i] = node(static_cast<unsigned short>(i), basbdd_one, basbdd_zero);
        }
    }

    EDGE constant(bool value) { return value ? basbdd_one : basbdd_zero; }
    EDGE variable(unsigned i) { return variables_[i]; } // kept, as other engines keep them
    EDGE node(unsigned short var, EDGE high, EDGE low)
    {
        return manager_.table->findoradd(var, high, low);
    }
    EDGE negate(EDGE f) { return ::negate(f); }
    EDGE conjunction(EDGE f, EDGE g) { return manager_.ifthenelse(f, g, basbdd_zero); }
    EDGE disjunction(EDGE f, EDGE g) { return manager_.ifthenelse(f, basbdd_one, g); }
    EDGE parity(EDGE f, EDGE g) { return manager_.ifthenelse(f, negate(g), g); }
    EDGE choice(EDGE f, EDGE g, EDGE h) { return manager_.ifthenelse(f, g, h); }
    EDGE cofactor(EDGE f, unsigned i, bool value) { return compose(f, i, constant(value)); }
    EDGE compose(EDGE f, unsigned i, EDGE g)
    {
        return manager_.compose(f, static_cast<unsigned short>(i), g);
    }
    double models(EDGE f) { return count_models(f, manager_.nvars); }

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

    BDD_MANAGER manager_;
    EDGE variables_[max_variables];
};
