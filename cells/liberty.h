/// @file
/// @brief Reads cell libraries in the Liberty format.
#pragma once

#include "basbdcells/library.h"
#include "scanner.h"

namespace basbdcells {

/// @brief Reads the rest of a text into `read`.
///
/// A statement that cannot be read gives a diagnostic, and reading goes on behind it. Groups and
/// attributes that say nothing of a cell's function are passed over and never kept.
void read_liberty(scanner& text, library& read);

} // namespace basbdcells
