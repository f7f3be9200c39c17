#include "genlib.h"

#include "basbdcells/text.h"
#include "diagnostics.h"
#include "expression_reader.h"
#include "numbers.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace basbdcells {

namespace {

/// The characters of a name or a number in a header.
constexpr char_set field_characters = char_set(" \t\r\n\v\f#;=").complemented();

std::string take_field(scanner& text)
{
    text.peek();
    return text.take_word(field_characters);
}

/// Takes a field that is a keyword or a number, or not kept but for a message.
std::string take_short_field(scanner& text)
{
    text.peek();
    return text.take_word(field_characters, 2 * longest_quoted);
}

/// Takes a number. What is none stays, for it may be the next statement.
/// @param place  what a message starts with
std::string take_number(scanner& text, const std::string& place, const std::string& meaning)
{
    text.peek();
    const int line = text.line();
    std::string field = take_short_field(text);
    if (!to_number(field)) {
        text.put_back(field);
        throw text_error(line, place + "expected a number as " + meaning + " instead of " +
                                   quoted(field));
    }
    return field;
}

/// The pins of a cell: its output and the inputs in the order of its function.
std::vector<pin> pins_of(const output& source)
{
    std::vector<pin> pins;
    for (const std::string& each : source.function.pins) {
        if (each != source.name) {
            pins.push_back({each, pin_direction::input, {}});
        }
    }
    const bool is_input = pins.size() < source.function.pins.size();
    pins.push_back({source.name, is_input ? pin_direction::inout : pin_direction::output, {}});
    return pins;
}

/// Reads what follows the word GATE: `name area output=expression;`.
cell read_gate(scanner& text, int line)
{
    cell read;
    read.line = line;
    read.name = take_field(text);
    if (read.name.empty()) {
        throw text_error(text.line(), "expected the name of a cell after GATE");
    }
    try {
        read.area = to_number(take_number(text, "", "the area"));
        text.peek();
        output drives;
        drives.line = line;
        drives.name = text.take_word(name_characters);
        if (drives.name.empty() || text.peek() != '=') {
            throw text_error(text.line(), "expected 'output=expression;' after the area");
        }
        text.take();
        drives.function = read_expression(text, genlib_grammar);
        const std::size_t width = drives.function.pins.size();
        if (width > max_inputs) {
            throw text_error(line, std::to_string(width) + " inputs; expected at most " +
                                       std::to_string(max_inputs));
        }
        read.pins = pins_of(drives);
        read.outputs.push_back(std::move(drives));
        return read;
    } catch (const text_error& error) {
        throw text_error(error.line, "cell " + shown_name(read.name) + ": " + error.what());
    }
}

/// The attributes of a PIN statement, behind its phase.
constexpr std::array<std::pair<const char*, const char*>, 6> pin_numbers{
    {{"input_load", "the input load"},
     {"max_load", "the largest load"},
     {"rise_delay", "the rise delay"},
     {"rise_slope", "the rise slope"},
     {"fall_delay", "the fall delay"},
     {"fall_slope", "the fall slope"}}};

/// Reads what follows the word PIN: a pin or "*", a phase and six numbers.
/// @param described  the pins of the PIN statements before it
void read_pin(scanner& text, cell* owner, std::set<std::string>& described)
{
    text.peek();
    const int line = text.line();
    const std::string name = take_field(text);
    if (owner == nullptr) {
        throw text_error(line, "PIN without a cell before it");
    }
    const std::string place =
        "cell " + shown_name(owner->name) + ": PIN " + shown_name(name) + ": ";
    const std::vector<std::string>& inputs = owner->outputs.front().function.pins;
    if (name != "*" && std::find(inputs.begin(), inputs.end(), name) == inputs.end()) {
        throw text_error(line, place + "expected '*' or an input of the cell's function");
    }
    if (!described.insert(name).second) {
        throw text_error(line, place + "expected once in a cell");
    }
    text.peek();
    const int phase_line = text.line();
    const std::string phase = take_short_field(text);
    if (phase != "INV" && phase != "NONINV" && phase != "UNKNOWN") {
        text.put_back(phase);
        throw text_error(phase_line,
                         place + "expected INV, NONINV or UNKNOWN instead of " + quoted(phase));
    }
    std::vector<attribute> attributes{{"phase", phase}};
    for (const auto& [key, meaning] : pin_numbers) {
        attributes.push_back({key, take_number(text, place, meaning)});
    }
    for (pin& each : owner->pins) {
        const bool is_meant =
            name == "*" ? each.direction != pin_direction::output : each.name == name;
        if (is_meant && each.attributes.empty()) {
            each.attributes = attributes;
        }
    }
}

/// Passes everything up to the next word GATE or LATCH.
void skip_statement(scanner& text)
{
    constexpr std::size_t longest_keyword = 6;
    while (text.peek() != scanner::end) {
        const std::string next = text.take_word(field_characters, longest_keyword);
        if (next == "GATE" || next == "LATCH") {
            text.put_back(next);
            return;
        }
        if (next.empty()) {
            text.take();
        }
    }
}

} // namespace

void read_genlib(scanner& text, library& read)
{
    cell* owner = nullptr;
    std::set<std::string> described;
    while (true) {
        const int first = text.peek();
        if (first == scanner::end) {
            return;
        }
        const int line = text.line();
        const std::string keyword = take_short_field(text);
        try {
            if (keyword == "GATE") {
                owner = nullptr;
                described.clear();
                owner = &read.cells.emplace_back(read_gate(text, line));
            } else if (keyword == "PIN") {
                read_pin(text, owner, described);
            } else if (keyword == "LATCH") {
                add_diagnostic(read, {line, "note: LATCH passed over", false});
                skip_statement(text);
            } else {
                throw text_error(line, "expected GATE, PIN or LATCH instead of " +
                                           (keyword.empty() ? shown(first) : quoted(keyword)));
            }
        } catch (const text_error& error) {
            add_diagnostic(read, {error.line, error.what(), true});
            skip_statement(text);
        }
    }
}

} // namespace basbdcells
