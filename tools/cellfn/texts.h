/// @file
/// @brief The texts of a truth table, how long its equations are, and the check that they read
/// back.
#pragma once

#include "basbdd.h"
#include "basbdtt.h"

#include <cstdint>
#include <optional>
#include <string>

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

/// Equations of more literals are not written: there may be a hundred million in one.
constexpr std::uint64_t most_literals = 100000;

/// The texts of one truth table.
struct table_texts {
    /// @param literals  of the table's equations
    explicit table_texts(const BOOL_TRUTH_TABLE& table, literal_counts literals = {});
    std::string hexadecimal;
    std::optional<std::string> external;
    std::optional<std::string> internal;
};

/// @brief Reads the texts back and compares each with the table.
/// @return what differs, empty when nothing does
std::string check_texts(const BOOL_TRUTH_TABLE& table, const table_texts& texts);

} // namespace cellfn
