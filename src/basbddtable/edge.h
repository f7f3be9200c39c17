/// @file
/// @brief Edges: a node's address whose bit 0 is the complement mark.
///
/// The only place that knows how the mark is kept. Nodes come from the ordinary allocator, so
/// bit 0 of their addresses is clear.
#pragma once

#include "basbddtable.h"

#include <cstdint>

namespace basbddtable::edge {

constexpr std::uintptr_t mark = 1;
static_assert(alignof(BDD_NODE) > mark, "the mark is a bit that is clear in every node's address");

/// The edge as a number, mark included: what edges are ordered and hashed by.
inline std::uintptr_t value(const BDD_NODE* e) { return reinterpret_cast<std::uintptr_t>(e); }

inline BDD_NODE* from_value(std::uintptr_t value)
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the mark is a bit of the address
    return reinterpret_cast<BDD_NODE*>(value);
}

inline bool is_marked(const BDD_NODE* e) { return (value(e) & mark) != 0; }

/// The node that the edge points at: the edge without its mark.
inline BDD_NODE* node(BDD_NODE* e) { return from_value(value(e) & ~mark); }

/// The edge of the complement. `e` is not null: there is no marked null.
inline BDD_NODE* complement(BDD_NODE* e) { return from_value(value(e) ^ mark); }

/// `e` is not null.
inline BDD_NODE* complement_if(BDD_NODE* e, bool condition)
{
    return from_value(value(e) ^ static_cast<std::uintptr_t>(condition));
}

/// Null, the missing result, stays null.
inline BDD_NODE* complement_unless_null(BDD_NODE* e, bool condition)
{
    return e == nullptr ? nullptr : complement_if(e, condition);
}

/// The cofactors of the function of `e` for the variable of its node. `e` is no constant, whose
/// node has no children.
inline BDD_NODE* high(BDD_NODE* e) { return complement_if(node(e)->high, is_marked(e)); }
inline BDD_NODE* low(BDD_NODE* e) { return complement_if(node(e)->low, is_marked(e)); }

/// The variable of the edge's node; that of the constants is larger than every other.
inline unsigned short variable(BDD_NODE* e) { return node(e)->varid; }

/// Whether the node is that of a variable alone; `one` is the edge to the constant 1.
inline bool is_variable_node(const BDD_NODE& node, BDD_NODE* one)
{
    return node.high == one && node.low == complement(one);
}

} // namespace basbddtable::edge
