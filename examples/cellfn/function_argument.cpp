#include "function_argument.h"

#include "genlib.h"
#include "status.h"
#include "usage_error.h"

#include <algorithm>
#include <cstddef>

namespace cellfn {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

[[noreturn]] void refuse(const std::string& text, const std::string& why)
{
    throw usage_error("function '" + text + "': " + why);
}

bool is_input_name(const std::string& text, std::size_t at)
{
    return upper(text[at]) == 'B' && at + 1 < text.size() && is_digit(text[at + 1]);
}

bool is_internal(const std::string& text)
{
    if (text.rfind("F0=", 0) == 0) {
        return true;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (is_input_name(text, i)) {
            return true;
        }
    }
    return false;
}

/// The width at which a column of all the digits fits exactly.
int width_of_digits(const std::string& text)
{
    const std::size_t digits = text.size() - 2;
    int width = 2;
    while ((std::size_t{1} << (width - 2)) < digits && width < static_cast<int>(max_inputs)) {
        ++width;
    }
    if ((std::size_t{1} << (width - 2)) != digits) {
        refuse(text, std::to_string(digits) + " digits; expected 1, 2, 4, 8, ... or --width");
    }
    return width;
}

int width_of_internal(const std::string& text)
{
    int width = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (is_input_name(text, i)) {
            int number = text[i + 1] - '0';
            if (i + 2 < text.size() && is_digit(text[i + 2])) {
                number = 10 * number + (text[i + 2] - '0');
            }
            width = std::max(width, number + 1);
        }
    }
    return width;
}

int width_of_external(const std::string& text)
{
    int width = 1;
    for (const char c : text) {
        if (upper(c) >= 'A' && upper(c) <= 'Z') {
            width = std::max(width, upper(c) - 'A' + 1);
        }
    }
    return width;
}

} // namespace

function_argument read_function(const std::string& text, int width)
{
    const bool hexadecimal = text.size() >= 2 && text[0] == '0' && upper(text[1]) == 'X';
    const bool internal = !hexadecimal && is_internal(text);
    if (width == 0) {
        width = hexadecimal ? width_of_digits(text)
                : internal  ? width_of_internal(text)
                            : width_of_external(text);
    }
    if (width > static_cast<int>(max_inputs)) {
        refuse(text,
               std::to_string(width) + " inputs; expected at most " + std::to_string(max_inputs));
    }
    function_argument read;
    if (hexadecimal) {
        read.table.set_value_from_hex_string(width, text);
    } else if (internal) {
        read.table.set_value_from_internal_equation(width, text);
    } else {
        read.table.set_value_from_external_equation(width, text);
    }
    const std::string messages = take_messages();
    if (!messages.empty()) {
        refuse(text, messages + "; expected an equation like 'A B + !C' or a column like 0x8F");
    }
    for (int i = 0; i < width; ++i) {
        read.inputs.push_back(internal ? "B" + std::to_string(i)
                                       : std::string(1, static_cast<char>('A' + i)));
    }
    return read;
}

} // namespace cellfn
