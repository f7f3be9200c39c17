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

    void descend_left() { descend(current->left, 0); }
    void descend_right() { descend(current->right, 1); }

    /// Back to the parent, where `replacement` takes the current node's place.
    /// @return the side that the walk comes back from
    SIDE ascend_with(BOOL_TNODE* replacement)
    {
        const auto side = reinterpret_cast<std::uintptr_t>(up) & 1U;
        auto* parent = reinterpret_cast<BOOL_TNODE*>(up - side);
        BOOL_TNODE*& lent = side == 0 ? parent->left : parent->right;
        up = reinterpret_cast<char*>(lent);
        lent = replacement;
        current = parent;
        return side == 0 ? SIDE::LEFT : SIDE::RIGHT;
    }
    SIDE ascend() { return ascend_with(current); }

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

/// What a visit wants next.
enum class WALK : unsigned char {
    BELOW, ///< go on with the node's children; not for leaves
    PAST,  ///< go on behind the node
    STOP   ///< end the walk
};

/// @brief Visits nodes in walk order: a node, then what is below its left and its right child.
///
/// A visit sees its node's own children and may replace those of an operator.
/// @param visit  answers a WALK for a `BOOL_TNODE&`; once per path that leads to the node
/// @param leave  takes each child that the walk does not go below any more, and may free it
/// @return whether a visit stopped the walk
template <typename VISIT, typename LEAVE>
inline bool visit_nodes(BOOL_TNODE* start, VISIT visit, LEAVE leave)
{
    const WALK first = visit(*start);
    if (first != WALK::BELOW) {
        return first == WALK::STOP;
    }
    const auto visit_child = [&](BOOL_TNODE* child) {
        const WALK next = child == nullptr ? WALK::PAST : visit(*child);
        if (next == WALK::PAST && child != nullptr) {
            leave(child);
        }
        return next;
    };
    TREE_PATH path(start);
    for (bool left_is_done = false;;) {
        BOOL_TNODE* const node = path.node();
        WALK next = left_is_done ? WALK::PAST : visit_child(node->left);
        if (next == WALK::BELOW) {
            path.descend_left();
            continue;
        }
        left_is_done = false;
        if (next != WALK::STOP) {
            next = visit_child(node->right);
        }
        if (next == WALK::STOP) {
            return true;
        }
        if (next == WALK::BELOW) {
            path.descend_right();
            continue;
        }
        while (!left_is_done) {
            if (path.at_start()) {
                return false;
            }
            BOOL_TNODE* const child = path.node();
            left_is_done = path.ascend() == SIDE::LEFT;
            leave(child);
        }
    }
}

template <typename VISIT>
inline bool visit_nodes(BOOL_TNODE* start, VISIT visit)
{
    return visit_nodes(start, visit, [](BOOL_TNODE* /*child*/) {});
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
