/// @file
/// @brief The total order of nodes that both stores share.
#pragma once

#include "edge.h"

/// @brief Compares variable, high edge and low edge, in this order, as unsigned numbers.
/// @return -1, 0 or 1
inline int bdd_cmp(const BDD_NODE* a, const BDD_NODE* b)
{
    const auto three_way = [](auto x, auto y) {
        return static_cast<int>(x > y) - static_cast<int>(x < y);
    };
    if (a->varid != b->varid) {
        return three_way(a->varid, b->varid);
    }
    if (a->high != b->high) {
        return three_way(edge::value(a->high), edge::value(b->high));
    }
    return three_way(edge::value(a->low), edge::value(b->low));
}
