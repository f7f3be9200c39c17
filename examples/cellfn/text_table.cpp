#include "text_table.h"

#include "text.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <numeric>

namespace cellfn {

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t narrowest = 12; ///< a column is not cut below this, even on a small terminal
constexpr std::size_t aligned_line = 160; ///< where no line is too long

/// The largest cut at which all columns still fit on a line.
std::size_t cut_for(const std::vector<std::size_t>& widths, std::size_t line_width)
{
    std::size_t cut = *std::max_element(widths.begin(), widths.end());
    const auto line_at = [&](std::size_t limit) {
        return std::accumulate(
            widths.begin(), widths.end(), std::size_t{0},
            [&](std::size_t sum, std::size_t width) { return sum + std::min(width, limit) + gap; });
    };
    cut = std::min(cut, line_width);
    while (cut > narrowest && line_at(cut) > line_width + gap) {
        --cut;
    }
    return cut;
}

/// An empty text must be seen between its neighbours.
std::string visible(const std::string& text) { return text.empty() ? "\"\"" : text; }

} // namespace

std::size_t output_width()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void text_table::print_tsv(std::ostream& out) const
{
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            out << (i == 0 ? "" : "\t") << row[i];
        }
        out << '\n';
    }
}

void text_table::print_aligned(std::ostream& out, std::size_t line_width) const
{
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], visible(row[i]).size());
        }
    }
    const bool is_limited = line_width > 0;
    const std::size_t cut = cut_for(widths, is_limited ? line_width : aligned_line);
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string full = visible(row[i]);
            const std::string text = is_limited ? elide(full, cut) : full;
            const std::size_t width = std::max(std::min(widths[i], cut), text.size());
            line += text + std::string(width - text.size() + gap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

} // namespace cellfn
