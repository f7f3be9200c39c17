/// @file
/// @brief Questions about the signals of a tree.
#pragma once

#include "node.h"
#include "tree_path.h"

/// Slots of a signal list.
constexpr unsigned short support_limit = 20;

/// Enters a leaf's signal into a list, unless it is there already or the list is full.
inline void enter_signal(TECHMAP_SIG** list, const BOOL_TNODE& leaf)
{
    TECHMAP_SIG* const sig = basbd_leaf_signal(leaf); // a constant's null changes nothing
    for (unsigned short i = 0; i < support_limit; ++i) {
        if (list[i] == nullptr || list[i] == sig) {
            list[i] = sig;
            return;
        }
    }
}

/// The distinct signals of one or more trees; at most 20 are told apart.
class SUPPORT {
public:
    void enter(const BOOL_TNODE& leaf) { enter_signal(list, leaf); }
    void enter_all(BOOL_TNODE* root)
    {
        visit_leaves(root, [this](const BOOL_TNODE& leaf) { enter(leaf); });
    }
    unsigned short size() const
    {
        unsigned short count = 0;
        while (count < support_limit && list[count] != nullptr) {
            ++count;
        }
        return count;
    }

private:
    TECHMAP_SIG* list[support_limit] = {};
};

bool is_in_support(BOOL_TNODE* start, const TECHMAP_SIG* sig);
