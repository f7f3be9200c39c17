/// @file
/// @brief Rows of text, printed for people or for a pipe.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace cellfn {

/// @brief Collects rows and prints them in aligned columns or, as `tsv`, separated by tabs.
class text_table {
public:
    /// @param header  one text a column
    explicit text_table(std::vector<std::string> header) { rows.push_back(std::move(header)); }

    void add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    std::size_t size() const { return rows.size() - 1; }

    /// Every text in full, the header first.
    void print_tsv(std::ostream& out) const;

    /// @brief In columns no wider than lets a line fit `line_width`; a longer text loses its
    /// middle.
    /// @param line_width  0 for no limit: longer texts are printed in full, out of line
    void print_aligned(std::ostream& out, std::size_t line_width) const;

private:
    std::vector<std::vector<std::string>> rows;
};

/// The width of the terminal behind standard output; 0 when there is none.
std::size_t output_width();

} // namespace cellfn
