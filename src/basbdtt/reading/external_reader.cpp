// The external equation: letters, juxtaposition for AND, blank operands for 1.
#include "basbdtt.h"
#include "basbdtt/reading/equation_reader.h"

namespace {

using namespace basbdtt;

constexpr element_table external_elements()
{
    element_table table = common_elements();
    table['!'] = element::negation;
    for (unsigned char letter = 'A'; letter <= 'Z'; ++letter) {
        table[letter] = element::input;
        table[letter - 'A' + 'a'] = element::input;
    }
    return table;
}

struct external_grammar {
    static constexpr element_table elements = external_elements();
    static constexpr bool negation_outranks_group = true;
    static constexpr operand blank = operand::constant(true);
    static constexpr refusal beyond_width = refusal::letter_beyond_width;

    /// A letter is joined with whatever follows it unless that is a `)` or an operator.
    static input_name read_input(const std::string& text, std::size_t position)
    {
        const int number = to_upper(text[position]) - 'A';
        std::size_t next = position + 1;
        while (next < text.size() && (text[next] == ' ' || text[next] == '\t')) {
            ++next;
        }
        const bool joined =
            next < text.size() && text[next] != ')' && text[next] != '*' && text[next] != '+';
        return {number, position + 1, joined};
    }

    static std::size_t prefix(const std::string& /*text*/, std::size_t /*position*/) { return 0; }
};

} // namespace

void BOOL_TRUTH_TABLE::set_value_from_external_equation(int new_width, const std::string& text)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    basbdtt::read_equation<external_grammar>(*this, new_width, text, 0);
}
