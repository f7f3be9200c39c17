/// @file
/// @brief The texts of a truth table, and the check that they read back.
#pragma once

#include "basbdtt.h"
#include "literals.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cellfn {

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
