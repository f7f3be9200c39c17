// The external equation as text: every token but "!" and "(" ends in a blank.
#include "basbdtt.h"
#include "basbdtt/writing/equation_writer.h"

namespace {

/// The letters run on past "Z".
constexpr basbdtt::input_names make_names()
{
    basbdtt::input_names names{};
    char letter = 'A';
    for (basbdtt::short_text& name : names) {
        const std::array<char, 2> text = {letter++, ' '};
        name.append({text.data(), text.size()});
    }
    return names;
}

struct external_format {
    static constexpr basbdtt::input_names names = make_names();
    static constexpr std::string_view negation = "!";
    static constexpr std::string_view conjunction{};
    static constexpr std::string_view disjunction = "+ ";
    static constexpr basbdtt::short_text close{") "};
    static constexpr bool has_exclusive = false;
    static constexpr std::string_view exclusive{};

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
