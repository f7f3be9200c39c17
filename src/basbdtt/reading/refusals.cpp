// The messages about equations that are refused.
#include "basbdtt/reading/equation_reader.h"

#include "ut_text.h"

#include <cstdlib>

namespace basbdtt {

namespace {

char* message_of(const operand& refused, int width)
{
    switch (refused.why()) {
    case refusal::unexpected_element:
        return neoform("Unexpected equation element '%c'", static_cast<int>(refused.detail()));
    case refusal::unbalanced:
        return neoform("Unbalanced parentheses in equation");
    case refusal::no_element:
        return neoform("Equation without an element outside parentheses");
    case refusal::blank_operand:
        return neoform("Blank equation or operand");
    case refusal::bare_input_name:
        return neoform("Equation input 'B' without a number");
    case refusal::input_beyond_width:
        return neoform("Equation input %d in a table of width %d",
                       static_cast<int>(refused.detail()), width);
    case refusal::letter_beyond_width:
        return neoform("Equation input '%c' in a table of width %d",
                       'A' + static_cast<int>(refused.detail()), width);
    }
    std::abort(); // there is no other refusal
}

} // namespace

void report_refusal(const operand& refused, int width) { ut_status(message_of(refused, width)); }

} // namespace basbdtt
