#include "equation_elements.h"

#include "scanner.h"
#include "text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cellfn {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

/// An input of the internal format has one digit or two.
std::size_t length_of_first(std::string_view text, bool is_internal)
{
    if (!is_internal || !is_letter(text.front())) {
        return 1;
    }
    const auto digits = text.substr(1, 2);
    return 1 + static_cast<std::size_t>(std::find_if_not(digits.begin(), digits.end(), is_digit) -
                                        digits.begin());
}

/// The input that an element names, -1 when it names none.
int input_of(std::string_view element, bool is_internal)
{
    const int letter = element.front() | ' ';
    if (!is_letter(element.front())) {
        return -1;
    }
    if (!is_internal) {
        return letter - 'a';
    }
    return letter == 'b' && element.size() > 1 ? std::stoi(std::string(element.substr(1))) : -1;
}

} // namespace

equation_elements::equation_elements(std::string_view text, bool in_internal_format)
    : equation(text), is_internal(in_internal_format)
{
    if (is_internal && text.substr(0, 3) == "F0=") {
        text.remove_prefix(3);
    }
    while (!text.empty()) {
        const std::size_t length = length_of_first(text, is_internal);
        if (text.front() != ' ' && text.front() != '\t') {
            elements.push_back(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
}

int equation_elements::highest_input() const
{
    int highest = -1;
    for (const std::string_view each : elements) {
        highest = std::max(highest, input_of(each, is_internal));
    }
    return highest;
}

std::string equation_elements::find_gap() const
{
    bool wants_operand = true;
    bool is_joined = false; // to an operand beside it, by the AND that a letter implies
    for (const std::string_view each : elements) {
        const char c = each.front();
        const bool is_operand = is_letter(c) || is_digit(c);
        const bool opens = is_operand || c == '(' || c == '!' || c == '~';
        if (opens != wants_operand && !(opens && is_joined)) {
            const auto at = static_cast<std::size_t>(each.data() - equation.data());
            return std::string(opens ? "expected an operator" : "expected an operand") +
                   " before '" + elide(std::string(equation.substr(at)), longest_quoted) + "'";
        }
        wants_operand = !is_operand && c != ')';
        is_joined = is_letter(c) && !is_internal;
    }
    return wants_operand && !elements.empty() ? "expected an operand at the end" : "";
}

expression equation_elements::to_expression(std::vector<std::string> pins) const
{
    std::string text;
    for (const std::string_view each : elements) {
        const char c = each.front();
        const int input = input_of(each, is_internal);
        if (input >= 0) {
            text += ' ' + pins[static_cast<std::size_t>(input)];
        } else if (is_digit(c)) {
            text += std::string(" CONST") + c;
        } else {
            text += c == '~' ? '!' : c == '@' ? '^' : c;
        }
    }
    text += elements.empty() ? "CONST1;" : ";"; // of the external format a blank equation
    scanner source(text);
    return read_expression(source, std::move(pins));
}

} // namespace cellfn
