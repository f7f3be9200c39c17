/// @file
/// @brief Graphviz graphs of functions. Edges that complement are dashed and end in a dot.
#pragma once

#include "basbdbool.h"
#include "basbdd.h"

#include <ostream>

namespace cellfn {

/// The BDD, its variables in ranks; an edge is labelled with the value that leads along it.
void write_bdd_graph(std::ostream& out, const BDD_FUNC& function);

/// The expression tree.
void write_tree_graph(std::ostream& out, const BOOL_FUNC& function);

} // namespace cellfn
