/// @file
/// @brief How long the equations of a truth table are, told without writing them.
#pragma once

#include "basbdd.h"

#include <cstdint>

namespace cellfn {

/// The literals in the equations of a truth table.
struct literal_counts {
    std::uint64_t external = 0;
    std::uint64_t internal = 0;
};

/// @brief Counts the literals from a diagram, which shares what the equations repeat.
/// @param edge  the table's function over variables that count from its highest input down, for
/// the equations expand that input first
literal_counts count_literals(const BDD_NODE* edge);

} // namespace cellfn
