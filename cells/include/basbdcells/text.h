/// @file
/// @brief Texts from files made fit to be shown.
#pragma once

#include "basbdapi.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace basbdcells {

/// @addtogroup cells Cell libraries
/// @{

/// Of what a message quotes.
constexpr std::size_t longest_quoted = 60;

/// @brief `text` on one line of printable ASCII: every other byte as `\xHH`.
///
/// All messages of this library have this form; names and attributes stay as the file has them.
BASBD_API std::string printable(std::string_view text);

/// `text`, or its two ends around "..." when it is longer than `limit`; its head where there is no
/// room for more.
BASBD_API std::string elide(std::string_view text, std::size_t limit);

/// The text in quotation marks as a message shows it, printable and no longer than is read.
BASBD_API std::string quoted(std::string_view text);

/// @}

} // namespace basbdcells
