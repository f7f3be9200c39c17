/// @file
/// @brief The libraries that the user names, and what there is to say about them.
#pragma once

#include "basbdcells/library.h"
#include "commands.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace cellfn {

/// The cells of all libraries that a command works on.
class sources {
public:
    /// Whether cells with `dont_use` are left out unless they are asked for.
    enum class advice { followed, shown };
    /// Reads the files and chooses the cells that the user wants.
    sources(const selection& from, advice use);

    /// A cell and the file it is from.
    struct entry {
        const basbdcells::cell* cell;
        const std::string* file;
    };

    /// Whether no file could be read at all.
    bool is_unreadable() const;
    /// The cells that have outputs.
    const std::vector<entry>& cells() const { return chosen; }
    /// The name of the cells' file, for the only one or several.
    std::string names() const;
    const std::string& file_of(const basbdcells::cell* cell) const;
    /// The names of all pins.
    std::vector<std::string> pins() const;
    /// @brief Prints the diagnostics of all files. @return whether one of them is an error
    bool print_diagnostics() const;

private:
    struct file {
        std::string name;
        basbdcells::library read;
        std::size_t advised_against = 0; ///< cells that were left out for `dont_use`
    };
    std::deque<file> files; ///< cells and names keep their places
    std::vector<entry> chosen;
};

/// The columns that `list` and `classes` begin with, then their own, then the cells' library.
std::vector<column> output_columns(const selection& from, std::vector<column> own);

/// Prints `file:line: message`, or `file: message` without a line, on standard error.
void print_message(const std::string& file, int line, const std::string& message);

/// The area of a cell, null when it is unknown.
value area_of(const basbdcells::cell& source);

/// The words with blanks between them.
std::string joined(const std::vector<std::string>& words);

} // namespace cellfn
