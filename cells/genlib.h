/// @file
/// @brief Reads cell libraries in the genlib format.
#pragma once

#include "basbdcells/library.h"
#include "scanner.h"

namespace basbdcells {

/// @brief Reads the rest of a text into `read`. A bad statement gives a diagnostic, and reading
/// goes on with the next GATE; a LATCH is passed over with a note, for it has no function of its
/// inputs alone.
void read_genlib(scanner& text, library& read);

} // namespace basbdcells
