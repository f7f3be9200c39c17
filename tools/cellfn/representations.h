/// @file
/// @brief One function in all three representations.
#pragma once

#include "basbdd.h"
#include "forms.h"
#include "texts.h"

#include <string>
#include <vector>

namespace cellfn {

/// Whether a function has so many assignments that comparing them all takes a while.
inline bool is_large(const basbdcells::expression& source) { return source.pins.size() > 20; }

/// @brief The truth table, the expression tree and the BDD of one expression.
///
/// Table and tree are each built from the expression, the BDD is converted from the tree.
struct representations {
    explicit representations(const basbdcells::expression& source);

    /// The table's equations; the number of their literals when there are too many to write.
    std::string external() const;
    std::string internal() const;

    /// The tree's equation; "-" when the function has more inputs than there are variable names.
    std::string equation();

    /// @brief Reads the table's texts back, as far as they are written, and compares column, tree
    /// and BDD on every assignment.
    /// @return what differs, empty when nothing does
    std::string check() const;

    std::vector<TECHMAP_SIG> signals; ///< of the pins; tree and BDD point to them
    BOOL_TRUTH_TABLE table;
    cell_tree tree;
    BDD_MANAGER manager;
    BDD_FUNC bdd;
    literal_counts literals;
    table_texts texts;
};

} // namespace cellfn
