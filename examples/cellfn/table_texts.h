/// @file
/// @brief The texts of a truth table, and the check that they read back.
#pragma once

#include "basbdtt.h"

#include <string>

namespace cellfn {

/// The texts of one truth table.
struct table_texts {
    explicit table_texts(const BOOL_TRUTH_TABLE& table);
    std::string hexadecimal;
    std::string external;
    std::string internal;
};

/// @brief Reads the texts back and compares each with the table.
/// @return what differs, empty when nothing does
std::string check_texts(const BOOL_TRUTH_TABLE& table, const table_texts& texts);

} // namespace cellfn
