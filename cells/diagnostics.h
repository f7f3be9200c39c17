/// @file
/// @brief Adds what is to be told of a library.
#pragma once

#include "basbdcells/library.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace basbdcells {

/// A file that is no library at all may have a fault on every line.
constexpr std::size_t most_diagnostics = 1000;

/// The name of a cell or a pin as a message shows it: printable, and no longer than is read.
std::string shown_name(std::string_view name);

/// Adds a diagnostic, or a last one that says that there are more.
void add_diagnostic(library& to, diagnostic added);

} // namespace basbdcells
