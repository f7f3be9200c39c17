#include "sources.h"

#include "basbdcells/text.h"
#include "terminal.h"

#include <fnmatch.h>

#include <algorithm>

namespace cellfn {

namespace {

std::string shown_name(const std::string& file)
{
    return file == "-" ? "standard input" : basbdcells::printable(file);
}

} // namespace

sources::sources(const selection& from, advice use)
{
    for (const std::string& name : from.files) {
        file& next = files.emplace_back(file{name, basbdcells::read_library_file(name)});
        for (const basbdcells::cell& each : next.read.cells) {
            const bool is_excluded = std::any_of(
                from.excluded.begin(), from.excluded.end(), [&](const std::string& pattern) {
                    return fnmatch(pattern.c_str(), each.name.c_str(), 0) == 0;
                });
            if (is_excluded || each.outputs.empty()) {
                continue;
            }
            if (each.dont_use && use == advice::followed && !from.with_dont_use) {
                ++next.advised_against;
            } else {
                chosen.push_back({&each, &next.name});
            }
        }
    }
}

bool sources::is_unreadable() const
{
    return std::all_of(files.begin(), files.end(), [](const file& each) {
        const auto& found = each.read.diagnostics;
        return each.read.cells.empty() && !found.empty() && found.front().line == 0 &&
               found.front().is_error;
    });
}

std::string sources::names() const
{
    std::string all;
    for (const file& each : files) {
        all += (all.empty() ? "" : ", ") + shown_name(each.name);
    }
    return all;
}

const std::string& sources::file_of(const basbdcells::cell* cell) const
{
    const auto found = std::find_if(chosen.begin(), chosen.end(),
                                    [&](const entry& each) { return each.cell == cell; });
    return *found->file;
}

std::vector<std::string> sources::pins() const
{
    std::vector<std::string> all;
    for (const entry& each : chosen) {
        for (const basbdcells::pin& pin : each.cell->pins) {
            all.push_back(pin.name);
        }
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

bool sources::print_diagnostics() const
{
    bool has_error = false;
    for (const file& each : files) {
        for (const basbdcells::diagnostic& found : each.read.diagnostics) {
            print_message(each.name, found.line, found.message);
            has_error |= found.is_error;
        }
        if (each.advised_against > 0) {
            print_message(each.name, 0,
                          "note: " + std::to_string(each.advised_against) +
                              (each.advised_against == 1 ? " cell" : " cells") +
                              " with dont_use left out; --with-dont-use takes them");
        }
    }
    return has_error;
}

std::vector<column> output_columns(const selection& from, std::vector<column> own)
{
    own.insert(own.begin(), {{"cell", on_terminal::whole},
                             {"output", on_terminal::whole, 7},
                             {"area", on_terminal::whole, 6},
                             {"inputs", on_terminal::cut, 4},
                             {"column", on_terminal::cut, 5}});
    own.push_back({"library", from.files.size() > 1 ? on_terminal::cut : on_terminal::hidden, 1});
    return own;
}

void print_message(const std::string& file, int line, const std::string& message)
{
    tell((line > 0 ? "" : "cellfn: ") + shown_name(file) + ':' +
         (line > 0 ? std::to_string(line) + ':' : "") + ' ' + message);
}

value area_of(const basbdcells::cell& source)
{
    return source.area ? value(*source.area) : value();
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& each : words) {
        text += (text.empty() ? "" : " ") + each;
    }
    return text;
}

} // namespace cellfn
