/// @file
/// @brief The external equation as text: every token but "!" and "(" ends in a blank.
#include "basbdtt.h"
#include "equation_writer.h"

namespace {

/// The letters run on past "Z".
constexpr basbdtt::input_names make_names()
{
    basbdtt::input_names names{};
    char letter = 'A';
    for (basbdtt::short_text& name : names) {
        name = {{letter++, ' '}, 2};
    }
    return names;
}

/// The functions of two inputs that are not constant, as they stand in a group.
constexpr std::array<std::string_view, 16> two_inputs = {
    "",    "(!B !A ) ",       "(!B A ) ",    "!B ",        "(B !A ) ",
    "!A ", "(!B A + B !A ) ", "(!B + !A ) ", "(B A ) ",    "(!B !A + B A ) ",
    "A ",  "(!B + A ) ",      "B ",          "(!A + B ) ", "(A + B ) ",
    ""};

struct external_format {
    static constexpr basbdtt::input_names names = make_names();
    static constexpr basbdtt::two_input_texts two_input_texts = basbdtt::make_texts(two_inputs);
    static constexpr basbdtt::short_text negation = basbdtt::make_short_text("!");
    static constexpr basbdtt::short_text conjunction = basbdtt::make_short_text("");
    static constexpr basbdtt::short_text disjunction = basbdtt::make_short_text("+ ");
    static constexpr basbdtt::short_text close = basbdtt::make_short_text(") ");
    static constexpr bool has_exclusive = false;

    static std::string constant_text(int width, bool one, bool top_level)
    {
        if (!one) {
            return width == 1 ? "0 " : "0";
        }
        return top_level && width > 1 ? "1" : "";
    }
};

} // namespace

std::string BOOL_TRUTH_TABLE::get_external_equation() const
{
    return get_external_equation_recurse(*this, true);
}

std::string BOOL_TRUTH_TABLE::get_external_equation_recurse(const BOOL_TRUTH_TABLE& table,
                                                            bool top_level)
{
    return basbdtt::equation_writer<external_format>().write(table, top_level);
}
