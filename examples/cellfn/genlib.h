/// @file
/// @brief Reads cell libraries in the genlib format.
#pragma once

#include "expression.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cellfn {

/// The most inputs of a cell: an external equation names its inputs by letters.
constexpr std::size_t max_inputs = 26;

/// A combinational cell of a library.
struct cell {
    std::string name;
    double area;
    std::string output;
    expression function;
    int line; ///< where its GATE stands
};

/// Something that a reader of the library must know.
struct diagnostic {
    int line;
    std::string message;
    bool is_error;
};

/// A cell library as far as it could be read.
struct library {
    std::string file;
    std::vector<cell> cells;
    std::vector<diagnostic> diagnostics;
};

/// @brief Reads the text of a library. A bad statement gives a diagnostic, and reading goes on with
/// the next GATE; a LATCH is passed over with a note, for it has no function of its inputs alone.
library read_genlib(std::string file, std::string_view text);

/// Reads a library from its file. Throws std::runtime_error when the file cannot be read or holds
/// nothing.
library load_library(const std::string& file);

/// Prints `file:line: message` on standard error.
void print_message(const std::string& file, int line, const std::string& message);

/// @brief Prints the diagnostics.
/// @return whether one of them is an error
bool print_diagnostics(const library& source);

} // namespace cellfn
