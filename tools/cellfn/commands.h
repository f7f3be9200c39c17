/// @file
/// @brief The commands of the program. Each returns the exit status.
#pragma once

#include "basbdcells/matcher.h"
#include "table.h"

#include <string>
#include <vector>

namespace cellfn {

constexpr int exit_success = 0;
constexpr int exit_no_match = 1;
constexpr int exit_trouble = 2; ///< anything else that the user must know

/// Which cells a command works on, and how it answers.
struct selection {
    std::vector<std::string> files;    ///< "-" for standard input
    std::vector<std::string> excluded; ///< patterns of cells' names
    bool with_dont_use = false;
    format shown = format::aligned;
};

/// Lists every output of the cells and checks that all its texts agree.
int list(const selection& from);

/// What is looked for.
struct match_request {
    std::vector<std::string> functions;
    int width = 0; ///< the number of inputs of each function, 0 to find it
    basbdcells::inverters inverters = basbdcells::inverters::allowed;
    bool all = false; ///< every way to connect a cell, and not just the best
    double inverter_area = 0;
};

/// Tells which cells implement functions, and how.
int match(const selection& from, const match_request& wanted);

/// Sorts the cells into classes of one function.
int classes(const selection& from, basbdcells::inverters use);

/// What `show` writes.
enum class graph { none, bdd, tree };

/// @brief Writes every representation of one function or, if `wanted`, one of them as a graph.
/// @param function  a function or, when there are files, a cell or `cell/output` of them
int show(const selection& from, const std::string& function, int width, graph wanted);

} // namespace cellfn
