/// @file
/// @brief Numbers in cell libraries.
#pragma once

#include <optional>
#include <string_view>

namespace basbdcells {

/// The finite number that is the whole text, whatever the locale.
std::optional<double> to_number(std::string_view text);

/// @brief The finite value of an arithmetic expression: `+`, `-`, `*`, `/`, parentheses and
/// numbers.
///
/// None for anything else, names too.
std::optional<double> to_value(std::string_view expression);

} // namespace basbdcells
