/// @file
/// @brief Walks over trees of any depth.
#pragma once

#include "basbdbool.h"

#include <cstdint>
#include <type_traits>

namespace basbdbool {

/// An operand of an operator.
enum class branch : unsigned char { left, right };

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
class tree_path {
public:
    explicit tree_path(BOOL_TNODE* start) : current(start) {}
    tree_path(const tree_path&) = delete;
    tree_path& operator=(const tree_path&) = delete;
    ~tree_path()
    {
        while (!at_start()) {
            ascend();
        }
    }

    BOOL_TNODE* node() const { return current; }
    bool at_start() const { return up == nullptr; }

    void descend(branch side)
    {
        if (side == branch::left) {
            descend(current->left, 0);
        } else {
            descend(current->right, 1);
        }
    }

    /// To a child. On the start's chain, where nothing is lent yet, no way back is kept.
    void go_on(branch side)
    {
        if (!at_start()) {
            descend(side);
        } else {
            current = side == branch::left ? current->left : current->right;
        }
    }

    /// Back to the parent. @return the side that the walk comes back from
    branch ascend()
    {
        const auto side = reinterpret_cast<std::uintptr_t>(up) & 1U;
        auto* parent = reinterpret_cast<BOOL_TNODE*>(up - side);
        BOOL_TNODE*& lent = side == 0 ? parent->left : parent->right;
        up = reinterpret_cast<char*>(lent);
        lent = current;
        current = parent;
        return side == 0 ? branch::left : branch::right;
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
enum class step : unsigned char {
    below, ///< to its children; not for leaves
    past,  ///< on
    stop   ///< nowhere: the walk ends
};

/// For walks that do nothing on the way up.
struct nothing {
    void operator()(const BOOL_TNODE& /*node*/, branch /*side*/) const {}
};

/// @brief Walks over the operator `start` and what is below it, once per path.
///
/// All three see a node's own pointers and may change them.
/// @param first   answers for each operator what to do about its left operand
/// @param second  the same for its right operand, after what is below the left one
/// @param up      takes an operator and the side of the operand that the walk is done with. With
///                `nothing` to do, a walk goes along the start's chain of second operands once and
///                not back
/// @tparam first_side  the side that comes first
/// @return whether the walk was stopped
template <branch first_side = branch::left, typename first_function, typename second_function,
          typename up_function>
inline bool walk(BOOL_TNODE* start, first_function first, second_function second, up_function up)
{
    constexpr branch last = first_side == branch::left ? branch::right : branch::left;
    tree_path path(start);
    for (;;) {
        step next = step::stop;
        while ((next = first(*path.node())) == step::below) { // called here only, to be inlined
            path.descend(first_side);
        }
        while (next != step::stop && (next = second(*path.node())) == step::past) {
            branch side = last;
            while (side == last) {
                if (path.at_start()) {
                    return false;
                }
                side = path.ascend();
                up(*path.node(), side);
            }
        }
        if (next == step::stop) {
            return true;
        }
        if constexpr (std::is_same_v<up_function, nothing>) {
            path.go_on(last);
        } else {
            path.descend(last);
        }
    }
}

/// @brief A walk that looks at edges: at a pointer to an operand and the flag beside it.
/// @param enter  answers what to do about an operand
/// @param up     as for `walk`
template <branch first_side = branch::left, typename enter_function, typename up_function = nothing>
inline bool walk_edges(BOOL_TNODE* start, enter_function enter, up_function up = {})
{
    const auto enter_left = [&](BOOL_TNODE& node) { return enter(node.left, node.lcompl); };
    const auto enter_right = [&](BOOL_TNODE& node) { return enter(node.right, node.rcompl); };
    if constexpr (first_side == branch::left) {
        return walk<first_side>(start, enter_left, enter_right, up);
    } else {
        return walk<first_side>(start, enter_right, enter_left, up);
    }
}

/// Calls `leave` for an edge once the walk is done with what is below it.
template <typename leave_function>
auto on_edge(leave_function leave)
{
    return [leave](BOOL_TNODE& node, branch side) {
        const bool is_left = side == branch::left;
        leave(is_left ? node.left : node.right, is_left ? node.lcompl : node.rcompl);
    };
}

/// @brief Visits nodes: a node, then what is below its left and its right child.
/// @param visit  answers a step for a `BOOL_TNODE&`; once per path that leads to the node
/// @return whether a visit stopped the walk
template <typename visitor>
inline bool visit_nodes(BOOL_TNODE* start, visitor visit)
{
    const step first = visit(*start);
    if (first != step::below) {
        return first == step::stop;
    }
    return walk_edges(start, [&](BOOL_TNODE* child, unsigned char /*flag*/) {
        return child == nullptr ? step::past : visit(*child);
    });
}

/// Visits the leaves in walk order. @param visit  does something to a `BOOL_TNODE&`
template <typename visitor>
inline void visit_leaves(BOOL_TNODE* start, visitor visit)
{
    visit_nodes(start, [&](BOOL_TNODE& node) {
        if (!basbd_is_leaf(node)) {
            return step::below;
        }
        visit(node);
        return step::past;
    });
}

/// Whether some leaf satisfies `matches`; looks no further than the first one.
template <typename predicate>
inline bool any_leaf(BOOL_TNODE* start, predicate matches)
{
    return visit_nodes(start, [&](BOOL_TNODE& node) {
        if (!basbd_is_leaf(node)) {
            return step::below;
        }
        return matches(node) ? step::stop : step::past;
    });
}

/// Visits operators in walk order, once per path. @param visit  answers a step
template <typename visitor>
inline bool visit_operators(BOOL_TNODE* start, visitor visit)
{
    return visit_nodes(
        start, [&](BOOL_TNODE& node) { return basbd_is_leaf(node) ? step::past : visit(node); });
}

} // namespace basbdbool
