#include "function_argument.h"

#include "equation_elements.h"
#include "genlib.h"
#include "status.h"
#include "text.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace cellfn {

namespace {

bool is_hexadecimal(const std::string& text)
{
    return text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

bool has_internal_format(const std::string& text)
{
    return text.rfind("F0=", 0) == 0 || equation_elements(text, true).highest_input() >= 0;
}

} // namespace

function_argument::function_argument(std::string text, int width)
    : given(std::move(text)), is_column(is_hexadecimal(given)),
      is_internal(!is_column && has_internal_format(given))
{
    if (is_column) {
        read_column(width);
    } else {
        read_equation(width);
    }
    for (int i = 0; i < table.get_width(); ++i) {
        inputs.push_back(is_internal ? "B" + std::to_string(i)
                                     : std::string(1, static_cast<char>('A' + i)));
    }
}

void function_argument::read_column(int width)
{
    if (width == 0) { // at which the digits fit exactly
        const std::size_t digits = given.size() - 2;
        for (width = 2; std::size_t{1} << (width - 2) < digits; ++width) {
        }
        if (std::size_t{1} << (width - 2) != digits || width > static_cast<int>(max_inputs)) {
            refuse(std::to_string(digits) + " digits; expected 1, 2, 4, 8, ... digits or --width");
        }
    }
    table.set_value_from_hex_string(width, given);
    refuse_messages("hexadecimal digits, no more than fit");
}

void function_argument::read_equation(int width)
{
    const equation_elements elements(given, is_internal);
    const int named = std::max(1, elements.highest_input() + 1);
    const int limit = width == 0 ? static_cast<int>(max_inputs) : width;
    if (named > limit) {
        refuse(std::to_string(named) + " inputs; expected at most " + std::to_string(limit));
    }
    width = std::max(width, named);
    if (is_internal) {
        table.set_value_from_internal_equation(width, given);
    } else {
        table.set_value_from_external_equation(width, given);
    }
    refuse_messages(is_internal ? "an equation in the internal format throughout, like 'B0*B1@~B2'"
                                : "an equation like 'A B + !C', or a column like 0x8F");
    const std::string gap = elements.find_gap();
    if (!gap.empty()) {
        refuse(gap);
    }
}

expression function_argument::source() const
{
    if (is_column) {
        const std::string written = table.get_internal_equation();
        return equation_elements(written, true).to_expression(inputs);
    }
    return equation_elements(given, is_internal).to_expression(inputs);
}

void function_argument::refuse_messages(const std::string& expected) const
{
    const std::string messages = take_messages();
    if (!messages.empty()) {
        refuse(messages + "; expected " + expected);
    }
}

void function_argument::refuse(const std::string& why) const
{
    throw std::runtime_error("function '" + elide(given, longest_quoted) + "': " + why);
}

} // namespace cellfn
