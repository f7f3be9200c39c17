/// @file
/// @brief Questions about the signals of a tree.
#pragma once

#include "node.h"
#include "tree_path.h"

#include <algorithm>
#include <cstdint>

namespace basbdbool {

/// Slots of a signal list.
constexpr unsigned short support_limit = 20;

/// @brief The distinct signals of one or more trees, in the order in which they are first met.
///
/// At most 20 are told apart. The slots behind the last signal are left alone.
class signal_list {
public:
    /// Begins without a signal, whatever is in the slots.
    explicit signal_list(TECHMAP_SIG** slots) : list(slots) {}

    /// Goes on with the signals that are in the slots already, up to the first null.
    void enter_listed()
    {
        while (count < support_limit && list[count] != nullptr) {
            filter |= filter_bit(list[count++]);
        }
    }

    /// Enters a leaf's signal, unless it is there already or the list is full.
    void enter(const BOOL_TNODE& leaf)
    {
        TECHMAP_SIG* const sig = basbd_leaf_signal(leaf);
        if (sig == nullptr || count == support_limit) {
            return;
        }
        const std::uint64_t bit = filter_bit(sig);
        if ((filter & bit) == 0 || std::find(list, list + count, sig) == list + count) {
            filter |= bit;
            list[count++] = sig;
        }
    }

    void enter_all(BOOL_TNODE* root)
    {
        visit_leaves(root, [this](const BOOL_TNODE& leaf) { enter(leaf); });
    }

    unsigned short size() const { return count; }

private:
    /// One of 64 bits for each signal (Fibonacci hashing).
    static std::uint64_t filter_bit(const TECHMAP_SIG* sig)
    {
        constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15;
        return std::uint64_t{1} << (reinterpret_cast<std::uintptr_t>(sig) * golden_ratio >> 58U);
    }

    TECHMAP_SIG** list;
    unsigned short count = 0;
    std::uint64_t filter = 0; ///< a signal whose bit is clear is not in the list
};

/// The number of distinct signals in a tree, at most 20.
inline unsigned short support_of(BOOL_TNODE* root)
{
    TECHMAP_SIG* slots[support_limit];
    signal_list support(slots);
    support.enter_all(root);
    return support.size();
}

/// Whether some leaf of the tree holds `sig`; looks no further than the first one.
bool is_in_tree(BOOL_TNODE* root, const TECHMAP_SIG* sig);

/// Whether some leaf of the tree below a node's child, which may be missing, holds `sig`.
inline bool is_in_operand(BOOL_TNODE* child, const TECHMAP_SIG* sig)
{
    if (child == nullptr) {
        return false;
    }
    if (__builtin_expect(static_cast<long>(basbd_is_leaf(*child)), 1L) != 0) { // as most are
        return is_leaf_of(*child, sig);
    }
    return is_in_tree(child, sig);
}

} // namespace basbdbool
