#include "genlib.h"

#include "scanner.h"
#include "text.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace cellfn {

namespace {

std::string quoted(std::string_view field)
{
    return "'" + elide(std::string(field), longest_quoted) + "'";
}

/// @param place  what a message starts with
double to_number(scanner& text, const std::string& place, const std::string& meaning)
{
    const int line = text.line();
    const std::string_view field = text.peek_field();
    double value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (error != std::errc() || end != field.data() + field.size() || !std::isfinite(value)) {
        throw text_error(line, place + "expected a number as " + meaning + " instead of " +
                                   quoted(field));
    }
    text.take_field();
    return value;
}

/// Reads what follows the word GATE: `name area output=expression;`.
cell read_gate(scanner& text, int line)
{
    cell read{std::string(text.take_field()), 0, {}, {}, line};
    if (read.name.empty()) {
        throw text_error(text.line(), "expected the name of a cell after GATE");
    }
    try {
        read.area = to_number(text, "", "the area");
        read.output = text.take_identifier();
        if (read.output.empty() || text.peek() != '=') {
            throw text_error(text.line(), "expected 'output=expression;' after the area");
        }
        text.take();
        read.function = read_expression(text);
        if (read.function.pins.size() > max_inputs) {
            throw text_error(line, std::to_string(read.function.pins.size()) +
                                       " inputs; expected at most " + std::to_string(max_inputs));
        }
        return read;
    } catch (const text_error& error) {
        throw text_error(error.line, "cell " + read.name + ": " + error.what());
    }
}

/// Reads what follows the word PIN: a pin or "*", a phase and six numbers.
/// @param described  the pins of the PIN statements before it
void read_pin(scanner& text, const cell* owner, std::set<std::string>& described)
{
    const int line = text.line();
    const std::string pin(text.take_field());
    if (owner == nullptr) {
        throw text_error(line, "PIN without a cell before it");
    }
    const std::string place = "cell " + owner->name + ": PIN " + pin + ": ";
    const std::vector<std::string>& pins = owner->function.pins;
    if (pin != "*" && std::find(pins.begin(), pins.end(), pin) == pins.end()) {
        throw text_error(line, place + "expected '*' or an input of the cell's function");
    }
    if (!described.insert(pin).second) {
        throw text_error(line, place + "expected once in a cell");
    }
    const std::string_view phase = text.peek_field();
    if (phase != "INV" && phase != "NONINV" && phase != "UNKNOWN") {
        throw text_error(line,
                         place + "expected INV, NONINV or UNKNOWN instead of " + quoted(phase));
    }
    text.take_field();
    for (const char* meaning : {"the input load", "the largest load", "the rise delay",
                                "the rise slope", "the fall delay", "the fall slope"}) {
        to_number(text, place, meaning);
    }
}

/// Passes everything up to the next word GATE or LATCH.
void skip_statement(scanner& text)
{
    while (!text.at_end()) {
        const std::string_view next = text.peek_field();
        if (next == "GATE" || next == "LATCH") {
            return;
        }
        if (next.empty()) {
            text.take();
        } else {
            text.take_field();
        }
    }
}

} // namespace

library read_genlib(std::string file, std::string_view text)
{
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.substr(0, byte_order_mark.size()) == byte_order_mark) {
        text.remove_prefix(byte_order_mark.size());
    }
    library read{std::move(file), {}, {}};
    scanner source(text);
    const cell* owner = nullptr;
    std::set<std::string> described;
    while (!source.at_end()) {
        const int line = source.line();
        const std::string_view keyword = source.take_field();
        try {
            if (keyword == "GATE") {
                owner = nullptr;
                described.clear();
                owner = &read.cells.emplace_back(read_gate(source, line));
            } else if (keyword == "PIN") {
                read_pin(source, owner, described);
            } else if (keyword == "LATCH") {
                read.diagnostics.push_back({line, "note: LATCH passed over", false});
                skip_statement(source);
            } else {
                throw text_error(line,
                                 "expected GATE, PIN or LATCH instead of " +
                                     (keyword.empty() ? shown(source.peek()) : quoted(keyword)));
            }
        } catch (const text_error& error) {
            read.diagnostics.push_back({error.line, error.what(), true});
            skip_statement(source);
        }
    }
    return read;
}

library load_library(const std::string& file)
{
    std::error_code error;
    std::ifstream stream;
    if (std::filesystem::is_directory(file, error)) {
        error = std::make_error_code(std::errc::is_a_directory);
    } else {
        stream.open(file, std::ios::binary);
    }
    if (!stream.is_open()) {
        error = error ? error : std::error_code(errno, std::generic_category());
        throw std::runtime_error(file + ": cannot be read: " + error.message());
    }
    library read = read_genlib(file, std::string{std::istreambuf_iterator<char>(stream), {}});
    if (read.cells.empty() && read.diagnostics.empty()) {
        throw std::runtime_error(file + ": expected at least one GATE");
    }
    return read;
}

void print_message(const std::string& file, int line, const std::string& message)
{
    std::cerr << one_line(file) << ':' << line << ": " << one_line(message) << '\n';
}

bool print_diagnostics(const library& source)
{
    bool has_error = false;
    for (const diagnostic& each : source.diagnostics) {
        print_message(source.file, each.line, each.message);
        has_error |= each.is_error;
    }
    return has_error;
}

} // namespace cellfn
