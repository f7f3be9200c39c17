#include "basbdcells/function.h"

#include "basbdcells/text.h"
#include "expression_reader.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace basbdcells {

namespace {

using names = std::vector<std::string>;

constexpr grammar named_grammar{'\0', xor_rank::needs_parentheses, "!~'*&^+|()",
                                digit_constants | named_constants | quoted_pins | plain_products};
constexpr grammar letter_grammar{'\0', xor_rank::needs_parentheses, "!~'*&^+|()",
                                 digit_constants | plain_products | single_letters};
constexpr grammar internal_grammar{'\0', xor_rank::below_and, "~*@+()", digit_constants};

[[noreturn]] void refuse(const std::string& why) { throw text_error(1, why); }

bool is_upper(char c) { return c >= 'A' && c <= 'Z'; }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// The names in a text, none for an operand in quotation marks.
names names_in(std::string_view text)
{
    names found;
    scanner words(text, comments::none);
    for (int c = words.peek(); c != scanner::end; c = words.peek()) {
        std::string word = words.take_word(name_characters);
        if (words.take_if('"')) {
            words.take_string();
            found.emplace_back("\""); // no letter
        } else if (word.empty()) {
            words.take();
        } else if (!std::all_of(word.begin(), word.end(), is_digit)) {
            found.push_back(std::move(word));
        }
    }
    return found;
}

names letters(int count)
{
    names all;
    for (char c = 'A'; count > 0; ++c, --count) {
        all.emplace_back(1, c);
    }
    return all;
}

/// Whether every name is made of upper-case letters, none of them longer than one and a pin.
bool has_single_letters(const names& found, const names& pins)
{
    return std::all_of(found.begin(), found.end(), [&](const std::string& each) {
        return std::all_of(each.begin(), each.end(), is_upper) &&
               (each.size() == 1 || std::find(pins.begin(), pins.end(), each) == pins.end());
    });
}

/// Letters side by side are a product or a name, and only the user knows.
void refuse_ambiguous(const names& found, const names& pins)
{
    for (const std::string& each : found) {
        if (each.size() > 1 && std::all_of(each.begin(), each.end(), is_upper) &&
            std::find(pins.begin(), pins.end(), each) == pins.end()) {
            std::string product(1, each.front());
            for (const char c : each.substr(1)) {
                product += {' ', c};
            }
            refuse(quoted(each) + " is no pin here; expected " + quoted(product) +
                   " for a product of single letters, or '\"" + each + "\"' for one input");
        }
    }
}

int checked_width(std::size_t named, int width)
{
    const std::size_t limit = width == 0 ? max_inputs : static_cast<std::size_t>(width);
    if (named > limit) {
        refuse(std::to_string(named) + " inputs; expected at most " + std::to_string(limit));
    }
    return std::max({1, static_cast<int>(named), width});
}

function of_expression(expression source, const names& wanted_inputs)
{
    function read;
    read.inputs = wanted_inputs;
    read.source = std::move(source);
    read.source.pins = wanted_inputs;
    read.table = table_of(read.source);
    return read;
}

function read_letters(std::string_view text, int width)
{
    int count = 0;
    for (const std::string& each : names_in(text)) {
        count = std::max(count, *std::max_element(each.begin(), each.end()) - 'A' + 1);
    }
    const names inputs = letters(checked_width(static_cast<std::size_t>(count), width));
    scanner source(text, comments::none);
    return of_expression(read_expression(source, letter_grammar, inputs), inputs);
}

function read_names(std::string_view text, int width)
{
    scanner source(text, comments::none);
    expression read = read_expression(source, named_grammar);
    const names inputs = read.pins;
    if (checked_width(inputs.size(), width) >
        static_cast<int>(std::max<std::size_t>(1, inputs.size()))) {
        refuse("only " + std::to_string(inputs.size()) +
               " inputs; --width is for letters and columns");
    }
    return of_expression(std::move(read), inputs);
}

/// The number of an internal equation's input; nothing else may be named.
std::size_t number_of_input(const std::string& name)
{
    constexpr std::size_t longest = 3;
    const bool is_input = name.size() > 1 && name.size() <= longest &&
                          (name.front() == 'B' || name.front() == 'b') &&
                          std::all_of(name.begin() + 1, name.end(), is_digit);
    if (!is_input) {
        refuse("expected inputs B0 to B25 instead of " + quoted(name));
    }
    return std::stoul(name.substr(1));
}

function read_internal(std::string_view text, int width)
{
    if (text.substr(0, 3) == "F0=") {
        text.remove_prefix(3);
    }
    std::size_t count = 0;
    for (const std::string& each : names_in(text)) {
        count = std::max(count, number_of_input(each) + 1);
    }
    names inputs;
    for (int i = 0; i < checked_width(count, width); ++i) {
        inputs.push_back("B" + std::to_string(i));
    }
    scanner source(text, comments::none);
    expression read = read_expression(source, internal_grammar);
    for (step& each : read.steps) {
        each.pin = each.kind == step_kind::pin ? number_of_input(read.pins[each.pin]) : 0;
    }
    return of_expression(std::move(read), inputs);
}

/// @param digits  what stands behind "0x"
function read_column(std::string_view digits, int width)
{
    const auto is_hexadecimal = [](char c) {
        return is_digit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
    };
    const auto* const wrong = std::find_if_not(digits.begin(), digits.end(), is_hexadecimal);
    if (wrong != digits.end()) {
        refuse("expected a hexadecimal digit instead of " + shown(*wrong));
    }
    const auto digits_of = [](int inputs) {
        return std::size_t{1} << static_cast<unsigned>(std::max(0, inputs - 2));
    };
    if (width == 0) { // at which the digits fit exactly
        for (width = 2; width < static_cast<int>(max_inputs) && digits_of(width) < digits.size();
             ++width) {
        }
        if (digits_of(width) != digits.size()) {
            refuse(std::to_string(digits.size()) +
                   " digits; expected 1, 2, 4, 8, ... digits or --width");
        }
    }
    const bool is_wide = width == 1 && !digits.empty() && digits.back() > '3';
    if (digits.empty() || digits.size() > digits_of(width) || is_wide) {
        refuse(std::to_string(digits.size()) + " digits for " + std::to_string(width) +
               " inputs; expected " +
               (is_wide ? "at most 0x3" : "1 to " + std::to_string(digits_of(width))));
    }
    function read;
    read.inputs = letters(width);
    read.table.set_value_from_hex_string(width, std::string(digits));
    return read;
}

function read_text(std::string_view text, int width, const names& pins)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(blanks) + 1));
    if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
        return read_column(text.substr(2), width);
    }
    if (text.empty()) {
        refuse("expected an equation like 'A B + !C', or a column like 0x8F");
    }
    if (text.substr(0, 3) == "F0=" || text.find('@') != std::string_view::npos) {
        return read_internal(text, width);
    }
    const names found = names_in(text);
    if (has_single_letters(found, pins)) {
        return read_letters(text, width);
    }
    refuse_ambiguous(found, pins);
    return read_names(text, width);
}

} // namespace

std::variant<function, std::string> read_function(std::string_view text, int width,
                                                  const names& pins)
{
    try {
        if (width < 0 || width > static_cast<int>(max_inputs)) {
            refuse("width " + std::to_string(width) + "; expected 0 to " +
                   std::to_string(max_inputs));
        }
        return read_text(text, width, pins);
    } catch (const text_error& error) {
        return "function " + quoted(text) + ": " + error.what();
    }
}

} // namespace basbdcells
