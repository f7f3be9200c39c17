/// @file
/// @brief Texts made fit to be shown.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cellfn {

/// Of a text that is shown in full where people read it.
constexpr std::size_t longest_shown = 2000;

/// Of what a message quotes.
constexpr std::size_t longest_quoted = 60;

/// `text`, or its two ends around "..." when it is longer than `limit`.
std::string elide(const std::string& text, std::size_t limit);

/// The words with blanks between them.
std::string joined(const std::vector<std::string>& words);

/// A character as a message shows it: itself, or `\xHH` when it is no printable ASCII.
std::string shown(char character);

/// A message with every byte that is no printable ASCII as `\xHH`.
std::string ascii(const std::string& message);

/// A message with its control characters as `\xHH`, so that it stays on its line.
std::string one_line(const std::string& message);

} // namespace cellfn
