/// @file
/// @brief Plain recursive forms of the BDD operations, and managers over signals of their own.
#pragma once

#include "basbd_engine.h"
#include "tree_oracle.h"

#include <cstdint>
#include <vector>

namespace bdd_oracle {

inline std::uintptr_t bits(const BDD_NODE* e) { return reinterpret_cast<std::uintptr_t>(e); }
inline bool is_marked(const BDD_NODE* e) { return (bits(e) & 1U) != 0; }
inline BDD_NODE* node(BDD_NODE* e) { return is_marked(e) ? negate(e) : e; }

/// The operations by their definitions, cofactor by cofactor, without a memo or a shortcut.
BDD_NODE* ifthenelse(BDD_MANAGER& m, BDD_NODE* f, BDD_NODE* g, BDD_NODE* h);
BDD_NODE* compose(BDD_MANAGER& m, BDD_NODE* f, unsigned short var, BDD_NODE* g);

/// @brief A manager over signals of its own.
struct own_manager {
    std::vector<TECHMAP_SIG> own;
    std::vector<TECHMAP_SIG*> signals;
    BDD_MANAGER bdds;

    own_manager(BDD_STORE_METHOD method, unsigned variables);
    BDD_NODE* variable(unsigned index);
};

/// The value for the assignment whose bit i is the value of variable i.
bool evaluate(BDD_NODE* e, unsigned assignment);
/// All entries of the support list.
inline std::vector<unsigned short> support_of(const BDD_FUNC& f)
{
    return {f.suppt, f.suppt + f.nvars + 1};
}
/// Whether every node below is reduced, with an unmarked high edge and variables ascending.
bool is_canonical(BDD_NODE* e);

} // namespace bdd_oracle
