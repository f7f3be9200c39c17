/// @file
/// @brief The internal equation as text: no blanks, and an exclusive OR for complementary halves.
#include "basbdtt.h"
#include "equation_writer.h"

namespace {

constexpr basbdtt::input_names make_names()
{
    basbdtt::input_names names{};
    for (int i = 0; i < BASBDTT_MAX_WIDTH; ++i) {
        const auto units = static_cast<char>('0' + i % 10);
        const auto tens = static_cast<char>('0' + i / 10);
        names[static_cast<std::size_t>(i)] = i < 10 ? basbdtt::short_text{{'B', units}, 2}
                                                    : basbdtt::short_text{{'B', tens, units}, 3};
    }
    return names;
}

/// The functions of two inputs that are not constant, as they stand in a group.
constexpr std::array<std::string_view, 16> two_inputs = {
    "",        "(~B1*~B0)", "(~B1*B0)", "~B1",      "(B1*~B0)", "~B0",      "(B1@B0)", "(~B1+~B0)",
    "(B1*B0)", "(B1@~B0)",  "B0",       "(~B1+B0)", "B1",       "(~B0+B1)", "(B0+B1)", ""};

struct internal_format {
    static constexpr basbdtt::input_names names = make_names();
    static constexpr basbdtt::two_input_texts two_input_texts = basbdtt::make_texts(two_inputs);
    static constexpr basbdtt::short_text negation = basbdtt::make_short_text("~");
    static constexpr basbdtt::short_text conjunction = basbdtt::make_short_text("*");
    static constexpr basbdtt::short_text disjunction = basbdtt::make_short_text("+");
    static constexpr basbdtt::short_text close = basbdtt::make_short_text(")");
    static constexpr bool has_exclusive = true;
    static constexpr basbdtt::short_text exclusive = basbdtt::make_short_text("@");

    static std::string constant_text(int /*width*/, bool one, bool top_level)
    {
        if (!one) {
            return "0";
        }
        return top_level ? "1" : "";
    }
};

} // namespace

std::string BOOL_TRUTH_TABLE::get_internal_equation() const
{
    return "F0=" + get_internal_equation_recurse(*this, true);
}

std::string BOOL_TRUTH_TABLE::get_internal_equation_recurse(const BOOL_TRUTH_TABLE& table,
                                                            bool top_level)
{
    return basbdtt::equation_writer<internal_format>().write(table, top_level);
}
