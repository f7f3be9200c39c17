/// @file
/// @brief Walks over trees of any depth.
#pragma once

#include "basbdbool.h"

#include <cstdint>

enum class SIDE : unsigned char { LEFT, RIGHT };

/// @brief The way from a walk's start down to its current node, kept in the nodes themselves.
///
/// Going down to a child, the pointer that led there is lent to the way back up (Schorr and Waite,
/// CACM 10(8), 1967), so no walk takes call stack or memory however deep the tree is:
///
///     up -> parent|side        parent's pointer of that side -> grandparent|side ... null
///
/// Nodes off the way are as they always are, also where parents share them: a tree has no cycle,
/// so a node on the way is not met again below itself. The destructor goes back to the start, so a
/// walk may end or throw anywhere.
class TREE_PATH {
public:
    explicit TREE_PATH(BOOL_TNODE* start) : current(start) {}
    TREE_PATH(const TREE_PATH&) = delete;
    TREE_PATH& operator=(const TREE_PATH&) = delete;
    ~TREE_PATH()
    {
        while (!at_start()) {
            ascend();
        }
    }

    BOOL_TNODE* node() const { return current; }
    bool at_start() const { return up == nullptr; }

    void descend(SIDE side)
    {
        if (side == SIDE::LEFT) {
            descend(current->left, 0);
        } else {
            descend(current->right, 1);
        }
    }

    /// Back to the parent. @return the side that the walk comes back from
    SIDE ascend()
    {
        const auto side = reinterpret_cast<std::uintptr_t>(up) & 1U;
        auto* parent = reinterpret_cast<BOOL_TNODE*>(up - side);
        BOOL_TNODE*& lent = side == 0 ? parent->left : parent->right;
        up = reinterpret_cast<char*>(lent);
        lent = current;
        current = parent;
        return side == 0 ? SIDE::LEFT : SIDE::RIGHT;
    }

private:
    void descend(BOOL_TNODE*& child, unsigned side)
    {
        BOOL_TNODE* below = child;
        child = reinterpret_cast<BOOL_TNODE*>(up);
        up = reinterpret_cast<char*>(current) + side;
        current = below;
    }

    BOOL_TNODE* current;
    char* up = nullptr; ///< the parent's address, plus 1 when `current` is its right child
};

/// Where a walk goes from a node.
enum class WALK : unsigned char {
    BELOW, ///< to its children; not for leaves
    PAST,  ///< on
    STOP   ///< nowhere: the walk ends
};

/// @brief Walks over the operator `start` and what is below it, once per path.
///
/// All three see a node's own pointers and may change them.
/// @param first   answers for each operator what to do about its left operand
/// @param second  the same for its right operand, after what is below the left one
/// @param up      takes an operator and the side of the operand that the walk is done with
/// @tparam FIRST  the side that comes first
/// @return whether the walk was stopped
template <SIDE FIRST = SIDE::LEFT, typename ENTER_FIRST, typename ENTER_SECOND, typename UP>
inline bool walk(BOOL_TNODE* start, ENTER_FIRST first, ENTER_SECOND second, UP up)
{
    constexpr SIDE last = FIRST == SIDE::LEFT ? SIDE::RIGHT : SIDE::LEFT;
    TREE_PATH path(start);
    for (;;) {
        WALK next = first(*path.node());
        while (next == WALK::BELOW) {
            path.descend(FIRST);
            next = first(*path.node());
        }
        while (next != WALK::STOP && (next = second(*path.node())) == WALK::PAST) {
            SIDE side = last;
            while (side == last) {
                if (path.at_start()) {
                    return false;
                }
                side = path.ascend();
                up(*path.node(), side);
            }
        }
        if (next == WALK::STOP) {
            return true;
        }
        path.descend(last);
    }
}

/// @brief A walk that looks at edges: at a pointer to an operand and the flag beside it.
/// @param enter  answers what to do about an operand
/// @param leave  takes the edge again when the walk is done with what is below
template <SIDE FIRST = SIDE::LEFT, typename ENTER, typename LEAVE>
inline bool walk_edges(BOOL_TNODE* start, ENTER enter, LEAVE leave)
{
    const auto enter_left = [&](BOOL_TNODE& node) { return enter(node.left, node.lcompl); };
    const auto enter_right = [&](BOOL_TNODE& node) { return enter(node.right, node.rcompl); };
    const auto leave_edge = [&](BOOL_TNODE& node, SIDE side) {
        const bool is_left = side == SIDE::LEFT;
        leave(is_left ? node.left : node.right, is_left ? node.lcompl : node.rcompl);
    };
    if constexpr (FIRST == SIDE::LEFT) {
        return walk<FIRST>(start, enter_left, enter_right, leave_edge);
    } else {
        return walk<FIRST>(start, enter_right, enter_left, leave_edge);
    }
}

template <SIDE FIRST = SIDE::LEFT, typename ENTER>
inline bool walk_edges(BOOL_TNODE* start, ENTER enter)
{
    return walk_edges<FIRST>(start, enter, [](BOOL_TNODE* /*child*/, unsigned char /*flag*/) {});
}

/// @brief Visits nodes: a node, then what is below its left and its right child.
/// @param visit  answers a WALK for a `BOOL_TNODE&`; once per path that leads to the node
/// @return whether a visit stopped the walk
template <typename VISIT>
inline bool visit_nodes(BOOL_TNODE* start, VISIT visit)
{
    const WALK first = visit(*start);
    if (first != WALK::BELOW) {
        return first == WALK::STOP;
    }
    return walk_edges(start, [&](BOOL_TNODE* child, unsigned char /*flag*/) {
        return child == nullptr ? WALK::PAST : visit(*child);
    });
}

/// Visits the leaves in walk order. @param visit  does something to a `BOOL_TNODE&`
template <typename VISIT>
inline void visit_leaves(BOOL_TNODE* start, VISIT visit)
{
    visit_nodes(start, [&](BOOL_TNODE& node) {
        if (!basbd_is_leaf(node)) {
            return WALK::BELOW;
        }
        visit(node);
        return WALK::PAST;
    });
}

/// Whether some leaf satisfies `matches`; looks no further than the first one.
template <typename PREDICATE>
inline bool any_leaf(BOOL_TNODE* start, PREDICATE matches)
{
    return visit_nodes(start, [&](BOOL_TNODE& node) {
        if (!basbd_is_leaf(node)) {
            return WALK::BELOW;
        }
        return matches(node) ? WALK::STOP : WALK::PAST;
    });
}

/// Visits operators in walk order, once per path. @param visit  answers a WALK
template <typename VISIT>
inline bool visit_operators(BOOL_TNODE* start, VISIT visit)
{
    return visit_nodes(
        start, [&](BOOL_TNODE& node) { return basbd_is_leaf(node) ? WALK::PAST : visit(node); });
}
