// The internal equation as text: no blanks, and an exclusive OR for complementary halves.
#include "basbdtt.h"
#include "basbdtt/writing/equation_writer.h"

namespace {

constexpr basbdtt::input_names make_names()
{
    basbdtt::input_names names{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::array<char, 2> digits = {static_cast<char>('0' + i / 10),
                                            static_cast<char>('0' + i % 10)};
        const std::string_view number(digits.data(), digits.size());
        names[i].append("B").append(i < 10 ? number.substr(1) : number);
    }
    return names;
}

struct internal_format {
    static constexpr basbdtt::input_names names = make_names();
    static constexpr std::string_view negation = "~";
    static constexpr std::string_view conjunction = "*";
    static constexpr std::string_view disjunction = "+";
    static constexpr basbdtt::short_text close{")"};
    static constexpr bool has_exclusive = true;
    static constexpr std::string_view exclusive = "@";

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
