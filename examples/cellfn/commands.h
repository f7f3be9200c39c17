/// @file
/// @brief The commands of the program. Each returns the exit status.
#pragma once

#include "matcher.h"

#include <string>

namespace cellfn {

constexpr int exit_success = 0;
constexpr int exit_no_match = 1;
constexpr int exit_trouble = 2; ///< anything else that the user must know

/// Lists every cell of a library and checks that all its texts agree.
int list(const std::string& file, bool tsv);

/// Tells which cells of a library implement a function, and how.
/// @param width  the number of inputs of `function`, 0 to find it
int match(const std::string& file, const std::string& function, int width, match_options options,
          bool tsv);

/// What `show` writes.
enum class graph { none, bdd, tree };

/// Writes every representation of one function or, if `wanted`, one of them as a graph.
int show(const std::string& function, int width, graph wanted);

} // namespace cellfn
