/// @file
/// @brief The BDD of a cell.
#pragma once

#include "basbdd.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cellfn {

/// An edge taken apart.
struct edge_parts {
    explicit edge_parts(const BDD_NODE* edge);
    const BDD_NODE* node;
    bool complemented;
    bool is_constant() const { return node->varid == 0xFFFF; }
};

/// The nodes below an edge, the constant left out, each once and before those that it leads to.
std::vector<const BDD_NODE*> nodes_below(const BDD_NODE* edge);

/// Longer texts are not written: a node that several paths share is written out on each.
constexpr std::uint64_t longest_bdd_text = 1U << 16U;

/// The function as the library writes it over "a" to "z", or the length it would have.
std::string bdd_text(BDD_FUNC& function);

/// The function's value where input i has the value of bit i of `assignment`.
bool bdd_value(const BDD_FUNC& function, std::uint64_t assignment);

} // namespace cellfn
