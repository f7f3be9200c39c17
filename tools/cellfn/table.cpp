#include "table.h"

#include "basbdcells/text.h"
#include "terminal.h"

#include <algorithm>
#include <limits>
#include <map>
#include <sstream>
#include <utility>

namespace cellfn {

namespace {

constexpr std::size_t gap = 2;
constexpr std::size_t narrowest = 12;     ///< a column is left out rather than cut below this
constexpr std::size_t widest_first = 30;  ///< beyond it, and a third of a line, a text stands alone
constexpr std::size_t aligned_line = 160; ///< where no line is too long

bool may_cut(const column& each) { return each.shown == on_terminal::cut; }

/// JSON cannot hold bytes that are no UTF-8, and replacing them would make one name of two.
std::string utf8(const std::string& text)
{
    try {
        value(text).dump();
        return text;
    } catch (const value::type_error&) {
        return basbdcells::printable(text);
    }
}

value utf8_of(const value& of)
{
    if (of.is_string()) {
        return utf8(of.get_ref<const std::string&>());
    }
    if (!of.is_structured()) {
        return of;
    }
    value all = of.is_object() ? value::object() : value::array();
    for (const auto& [key, each] : of.items()) {
        of.is_object() ? void(all[utf8(key)] = utf8_of(each)) : all.push_back(utf8_of(each));
    }
    return all;
}

/// An empty text must be seen between its neighbours.
std::string visible(const std::string& text) { return text.empty() ? "\"\"" : text; }

} // namespace

std::string text_of(const value& of)
{
    if (of.is_string()) {
        return basbdcells::printable(of.get_ref<const std::string&>());
    }
    if (of.is_number_float()) {
        std::ostringstream text;
        text.precision(std::numeric_limits<double>::digits10);
        text << of.get<double>();
        return text.str();
    }
    if (of.is_structured()) {
        std::string text;
        for (const auto& [key, each] : of.items()) {
            text += (text.empty() ? "" : " ") +
                    (of.is_object() ? basbdcells::printable(key) + '=' : "") + text_of(each);
        }
        return text;
    }
    return of.is_null() ? "-" : of.dump();
}

table::table(std::ostream& to, format wanted, std::vector<column> all, std::size_t line_width)
    : out(to), kind(wanted), columns(std::move(all)), limit(line_width)
{
    for (const column& each : columns) {
        widths.push_back(std::max(each.name.size(), each.least_width));
        left_out.push_back(each.shown == on_terminal::hidden);
    }
    if (kind == format::tsv) {
        print_header();
    }
}

void table::print_header()
{
    std::vector<std::string> names(columns.size());
    std::transform(columns.begin(), columns.end(), names.begin(),
                   [](const column& each) { return each.name; });
    print_line(names);
}

void table::add(std::vector<value> row)
{
    ++rows;
    if (kind == format::json) {
        value object;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            object[columns[i].name] = utf8_of(row[i]);
        }
        out << (rows == 1 ? "[\n" : ",\n") << object.dump();
        return;
    }
    std::vector<std::string> texts(row.size());
    std::transform(row.begin(), row.end(), texts.begin(), text_of);
    if (kind == format::tsv) {
        print_line(texts);
    } else {
        add_aligned(texts);
    }
}

void table::add_aligned(const std::vector<std::string>& texts)
{
    std::vector<std::string> row;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string text = visible(texts[i]);
        const bool is_cut = may_cut(columns[i]);
        row.push_back(is_cut ? basbdcells::elide(text, longest_shown) : text);
    }
    if (columns.front().least_width > 0) {
        fit();
        print_line(row);
        return;
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        widths[i] = std::max(widths[i], row[i].size());
    }
    kept.push_back(std::move(row));
}

/// How long lines are when no column that may be cut is wider than `most`.
std::size_t table::length_at(std::size_t most) const
{
    std::size_t sum = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::size_t width = columns[i].shown == on_terminal::wrapped
                                      ? std::min(widths[i], narrowest)
                                  : may_cut(columns[i]) ? std::min(widths[i], most)
                                                        : widths[i];
        sum += left_out[i] ? 0 : width + gap;
    }
    return sum - gap;
}

/// Finds the columns that are shown and the largest cut at which they fit, and prints the header.
void table::fit()
{
    if (std::exchange(is_fitted, true)) {
        return;
    }
    const std::size_t most = limit > 0 ? limit : aligned_line;
    if (limit > 0) {
        widths.front() = std::min(widths.front(), std::max(limit / 3, widest_first));
    }
    std::multimap<int, std::size_t> lightest; // the last of a weight first
    for (std::size_t i = columns.size(); limit > 0 && i-- > 0;) {
        lightest.emplace(columns[i].weight, i);
    }
    for (const auto& [weight, i] : lightest) {
        left_out[i] = left_out[i] || (weight != always && length_at(narrowest) > most);
    }
    for (cut = most; cut > narrowest && length_at(cut) > most; --cut) {
    }
    print_header();
}

void table::print_line(const std::vector<std::string>& texts)
{
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (kind == format::tsv) {
            line += (i == 0 ? "" : "\t") + texts[i];
            continue;
        }
        if (left_out[i]) {
            continue;
        }
        const bool is_cut = limit > 0 && may_cut(columns[i]);
        std::string text = is_cut ? basbdcells::elide(texts[i], cut) : texts[i];
        if (columns[i].shown == on_terminal::wrapped) {
            const std::size_t indent = line.size();
            line = wrapped(line.append(text), indent, limit);
            continue;
        }
        const std::size_t width = may_cut(columns[i]) ? std::min(widths[i], cut) : widths[i];
        if (i == 0 && text.size() > width) {
            out << std::exchange(text, "") << '\n';
        }
        line += text + std::string(width - std::min(width, text.size()) + gap, ' ');
    }
    if (kind == format::aligned) {
        line.erase(line.find_last_not_of(' ') + 1);
    }
    out << line << '\n';
}

void table::finish(const std::string& summary)
{
    if (kind == format::json) {
        out << (rows == 0 ? "[]\n" : "\n]\n");
    }
    if (kind != format::aligned) {
        return;
    }
    fit();
    for (const auto& row : kept) {
        print_line(row);
    }
    out << summary << '\n';
    std::string names;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (left_out[i] && columns[i].shown != on_terminal::hidden) {
            names += ' ' + columns[i].name;
        }
    }
    if (!names.empty()) {
        out << wrapped("not shown for want of room:" + names + "; --tsv and --json print all", gap,
                       limit)
            << '\n';
    }
}

} // namespace cellfn
