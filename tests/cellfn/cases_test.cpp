#include "basbdcells/function.h"
#include "basbdcells/library.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <variant>

using namespace basbdcells;

namespace {

/// A Liberty file with what the text is of it.
std::string file_with(const std::string& kind, std::string text)
{
    if (kind == "function") {
        text = "pin(Y){direction:output;" + text + "}";
    } else if (kind == "output") {
        text += "pin(Y){direction:output;function:\"A B\";}";
    }
    if (kind != "library" && kind != "file") {
        text = "cell(a){pin(A,B){direction:input;}\n" + text + "}";
    }
    if (text.find('$') == std::string::npos) {
        text = "library(l){" + text + "\n$}";
    }
    return text.replace(text.find('$'), 1,
                        "cell(g){pin(A){direction:input;}pin(Y){direction:output;function:A;}}");
}

std::string results_of_library(const std::string& text)
{
    std::ostringstream lines;
    const library read = read_library(text);
    std::string separator = "= ";
    for (const cell& each : read.cells) {
        for (const output& drives : each.outputs) {
            lines << std::exchange(separator, " ") << each.name << '.' << drives.name << '='
                  << table_of(drives.function).value.get_hex_string();
            if (each.area) {
                lines << '/' << *each.area;
            }
        }
    }
    lines << (separator == " " ? "\n" : "");
    for (const diagnostic& each : read.diagnostics) {
        if (each.is_error) {
            lines << "! " << each.line << ": " << each.message << '\n';
        }
    }
    return lines.str();
}

std::string results_of_function(const std::string& text)
{
    const auto read = read_function(text);
    if (const auto* found = std::get_if<function>(&read)) {
        return "= " + found->table.value.get_hex_string() + '\n';
    }
    const auto& message = std::get<std::string>(read);
    return "! " + message.substr(message.find("': ") + 3) + '\n';
}

TEST(cases, are_read_as_the_file_says)
{
    std::ifstream file(CELLFN_CASES);
    std::string line;
    std::getline(file, line);
    while (file) {
        if (line.empty() || line.front() == '#') {
            std::getline(file, line);
            continue;
        }
        const std::string text = line;
        const std::string kind = line.substr(0, line.find(' '));
        std::string body = line.substr(kind.size() + 1);
        std::replace(body.begin(), body.end(), '%', '\n');
        std::string expected;
        while (std::getline(file, line) && (line[0] == '=' || line[0] == '!')) {
            expected += line + '\n';
        }
        EXPECT_EQ(kind == "FUNCTION" ? results_of_function(body)
                                     : results_of_library(file_with(kind, body)),
                  expected)
            << text;
    }
}

} // namespace
