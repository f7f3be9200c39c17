// The internal equation: `F0=` in front, inputs as `B` and a number, no blank operands.
#include "basbdtt.h"
#include "basbdtt/reading/equation_reader.h"

namespace {

using namespace basbdtt;

constexpr element_table internal_elements()
{
    element_table table = common_elements();
    table['@'] = element::exclusive;
    table['B'] = element::input;
    table['b'] = element::input;
    return table;
}

struct internal_grammar {
    static constexpr element_table elements = internal_elements();
    static constexpr bool negation_outranks_group = false;
    static constexpr operand blank = operand::refused(refusal::blank_operand);
    static constexpr refusal beyond_width = refusal::input_beyond_width;

    static bool is_digit(const std::string& text, std::size_t position)
    {
        return position < text.size() && text[position] >= '0' && text[position] <= '9';
    }

    /// `B` and one digit, or two where two follow.
    static input_name read_input(const std::string& text, std::size_t position)
    {
        if (!is_digit(text, position + 1)) {
            return {-1, position + 1, false};
        }
        const int first = text[position + 1] - '0';
        if (!is_digit(text, position + 2)) {
            return {first, position + 2, false};
        }
        return {10 * first + (text[position + 2] - '0'), position + 3, false};
    }

    /// By the time that a group is read its text is upper case, so that it may have "f0=" in front;
    /// the whole text may not.
    static std::size_t prefix(const std::string& text, std::size_t position)
    {
        const bool present = text.size() - position >= 3 && to_upper(text[position]) == 'F' &&
                             text[position + 1] == '0' && text[position + 2] == '=';
        return present ? 3 : 0;
    }
};

} // namespace

void BOOL_TRUTH_TABLE::set_value_from_internal_equation(int new_width, const std::string& text)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    const std::size_t begin = text.compare(0, 3, "F0=") == 0 ? 3 : 0;
    basbdtt::read_equation<internal_grammar>(*this, new_width, text, begin);
}
