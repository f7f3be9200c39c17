/// @file
/// @brief Where the blocks of a text come from.
#pragma once

#include "scanner.h"

#include <string>
#include <string_view>

namespace basbdcells {

/// A text in memory, which outlives the source.
block_source blocks_of_text(std::string_view text);

/// @brief A file, "-" for standard input, plain or compressed by gzip.
///
/// It throws text_error when the file cannot be read on, once, and is at its end from then on.
/// @return null when the file cannot be opened, for the reason in errno
block_source blocks_of_file(const std::string& path);

} // namespace basbdcells
