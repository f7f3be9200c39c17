/// @file
/// @brief The elements of the two equation texts, and what tells the texts apart.
///
/// A `grammar` says what is particular to a text, all static:
/// - `elements`: what each character is;
/// - `negation_outranks_group`: a negation is chosen before a group on its left, not only after it;
/// - `blank`: the value of a blank operand;
/// - `beyond_width`: why an input is refused that is not below the width;
/// - `read_input(text, position)`: the name that starts there;
/// - `prefix(text, position)`: the length of what is removed from the start of a group's text.
#pragma once

#include "basbdtt/reading/operand.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace basbdtt {

/// What a character of an equation is. The operators come first, numbered like `operation`.
enum class element : std::uint8_t {
    disjunction,
    exclusive,
    conjunction,
    negation,
    open,
    close,
    input,
    zero,
    one,
    blank,
    unexpected
};
using element_table = std::array<element, 256>;

constexpr bool stands_for(element what, operation op)
{
    return static_cast<std::uint8_t>(what) == static_cast<std::uint8_t>(op);
}
static_assert(stands_for(element::disjunction, operation::disjunction) &&
                  stands_for(element::exclusive, operation::exclusive) &&
                  stands_for(element::conjunction, operation::conjunction),
              "an operator is made of its element by a cast");

/// The elements that both equations have.
constexpr element_table common_elements()
{
    element_table table{};
    for (element& each : table) {
        each = element::unexpected;
    }
    table['+'] = element::disjunction;
    table['*'] = element::conjunction;
    table['~'] = element::negation;
    table['('] = element::open;
    table[')'] = element::close;
    table['0'] = element::zero;
    table['1'] = element::one;
    table[' '] = element::blank;
    table['\t'] = element::blank;
    return table;
}

constexpr char to_upper(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

/// An input's name as a grammar reads it.
struct input_name {
    int number;       ///< negative when the name is not complete
    std::size_t end;  ///< one past its last character
    bool conjunction; ///< the name is joined by AND with what follows
};

/// What stands at a position of a text.
template <typename grammar>
element element_at(const std::string& text, std::size_t position)
{
    return grammar::elements[static_cast<unsigned char>(text[position])];
}

/// The refusal of a character that is no element, told in upper case.
inline operand unexpected_at(const std::string& text, std::size_t position)
{
    const char character = to_upper(text[position]);
    return operand::refused(refusal::unexpected_element, static_cast<unsigned char>(character));
}

} // namespace basbdtt
