/// @file
/// @brief The expression tree and the BDD of a function.
#pragma once

#include "basbdbool.h"
#include "basbdcells/expression.h"
#include "basbdd.h"
#include "basbdtt.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The record behind the library's pointers to this host's signals: here a pin of a cell.
class TECHMAP_SIG {
public:
    std::string name;
};

namespace cellfn {

/// The variables that a tree's equation can name.
constexpr std::size_t named_variables = BOOL_VAR_NONE;

/// The tree of an expression: pin i becomes `signals[i]` and, while names last, variable i.
struct cell_tree {
    cell_tree(const basbdcells::expression& source, std::vector<TECHMAP_SIG>& signals);
    BOOL_FUNC function;
};

/// The function as the library writes it.
std::string tree_equation(BOOL_FUNC& function);

/// The column of a cell's tree, computed by walking it: `signals[i]` is input i.
TRUTH_TABLE_VAL tree_column(const BOOL_FUNC& function, const std::vector<TECHMAP_SIG>& signals);

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
