/// @file
/// @brief The nodes from which operations build their results.
#pragma once

#include "basbdd.h"
#include "basbddtable/edge.h"

#include <new>

namespace basbdd {

namespace edge = basbddtable::edge;

/// The node of a variable alone.
inline BDD_NODE* variable_node(const BDD_MANAGER& manager, unsigned short var)
{
    return manager.table->findoradd(var, basbdd_one, basbdd_zero);
}

/// @brief The edge of the function that is `high` where variable `var` is 1, else `low`.
///
/// A mark of `high` goes over to the edge that is returned: a stored high edge is never marked.
/// @param var   above the variables of both edges
/// @param high  an edge, marked or not, as is `low`
/// @param low   when it equals `high`, that is the result
/// @return null when a node is needed and the manager does not have the variable
inline BDD_NODE* make_node(const BDD_MANAGER& manager, unsigned short var, BDD_NODE* high,
                           BDD_NODE* low)
{
    if (high == low) {
        return high;
    }
    if (var >= manager.nvars) {
        return nullptr;
    }
    const bool complemented = edge::is_marked(high);
    return edge::complement_if(manager.table->findoradd(var,
                                                        edge::complement_if(high, complemented),
                                                        edge::complement_if(low, complemented)),
                               complemented);
}

/// @brief Does something that may need memory for nodes; where there is none, once more after
/// memory has been given back.
template <typename action, typename release>
BDD_NODE* with_memory_from(const release& give_back, const action& act)
{
    try {
        return act();
    } catch (const std::bad_alloc&) {
        give_back();
    }
    return act();
}

} // namespace basbdd
