/// @file
/// @brief Rows of values, printed for people or for programs.
#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace cellfn {

/// How answers are printed.
enum class format { aligned, tsv, json };

/// Of a text that is shown in full where people read it.
constexpr std::size_t longest_shown = 2000;

/// A text, a number, a list of texts, or null.
using value = nlohmann::ordered_json;

/// What becomes of a column where people read it.
enum class on_terminal {
    whole,   ///< never cut
    cut,     ///< loses its middle on a narrow terminal
    wrapped, ///< goes on below itself; the last column that is shown
    hidden   ///< for programs
};

constexpr int always = std::numeric_limits<int>::max();

/// A column and its name.
struct column {
    std::string name;
    on_terminal shown;
    int weight = always;         ///< where there is no room for all, the lightest are left out
    std::size_t least_width = 0; ///< when rows are printed before the last one is known
};

/// @brief Prints rows in aligned columns, as lines separated by tabs, or as a JSON array of
/// objects.
///
/// Names from files are escaped here, so that every row stays on its line.
class table {
public:
    /// @param line_width  of the terminal, 0 where no line is too long
    table(std::ostream& to, format wanted, std::vector<column> all, std::size_t line_width);

    /// Prints a row or, in aligned columns without a least width, keeps it.
    void add(std::vector<value> row);
    /// @brief Prints what was kept and ends the output.
    /// @param summary  for people, who are also told which columns were left out
    void finish(const std::string& summary = "");
    std::size_t size() const { return rows; }

private:
    std::size_t length_at(std::size_t most) const;
    void add_aligned(const std::vector<std::string>& texts);
    void print_header();
    void print_line(const std::vector<std::string>& texts);
    void fit();

    std::ostream& out;
    format kind;
    std::vector<column> columns;
    std::size_t limit; ///< of a line; 0 for none
    std::size_t rows = 0;
    std::vector<std::vector<std::string>> kept;
    std::vector<std::size_t> widths;
    std::vector<bool> left_out;
    std::size_t cut = 0;
    bool is_fitted = false;
};

/// A value as people and lines with tabs have it.
std::string text_of(const value& of);

} // namespace cellfn
