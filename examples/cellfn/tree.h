/// @file
/// @brief The expression tree of a cell.
#pragma once

#include "basbdbool.h"
#include "basbdtt.h"
#include "expression.h"
#include "host_signal.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cellfn {

/// The variables that a tree's equation can name.
constexpr std::size_t named_variables = BOOL_VAR_NONE;

/// The tree of an expression: pin i becomes `signals[i]` and, while names last, variable i.
struct cell_tree {
    cell_tree(const expression& source, std::vector<TECHMAP_SIG>& signals);
    BOOL_FUNC function;
};

/// The function as the library writes it.
std::string tree_equation(BOOL_FUNC& function);

/// The column of a cell's tree, computed by walking it: `signals[i]` is input i.
TRUTH_TABLE_VAL tree_column(const BOOL_FUNC& function, const std::vector<TECHMAP_SIG>& signals);

} // namespace cellfn
