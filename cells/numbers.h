/// @file
/// @brief Numbers in cell libraries.
#pragma once

#include <optional>
#include <string_view>

namespace basbdcells {

/// The finite number that a text is, if it is one as a whole.
std::optional<double> to_number(std::string_view text);

} // namespace basbdcells
