/// @file
/// @brief The terminal that people read at, if there is one, and lines that fit it.
#pragma once

#include <cstddef>
#include <string>

namespace cellfn {

/// @brief The width of the terminal behind standard output: what the environment's COLUMNS says,
/// or else the terminal itself.
/// @return 0 where there is no terminal, so that no line is too long
std::size_t output_width();

/// What becomes of a word that is longer than a line; names stay whole.
enum class words { whole, broken };

/// @brief A line that goes on below itself, from a blank on, where it is longer than a terminal is
/// wide.
/// @param indent  of what follows; a few blanks only where this leaves hardly any room
/// @param width  of the terminal, 0 where no line is too long
std::string wrapped(std::string line, std::size_t indent, std::size_t width,
                    words longest = words::whole);

/// Prints a message on standard error.
void tell(const std::string& message);

} // namespace cellfn
