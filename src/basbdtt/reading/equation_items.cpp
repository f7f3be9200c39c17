// Cuts the operands of an element out of an equation's text.
#include "basbdtt.h"

#include <algorithm>

std::string BOOL_TRUTH_TABLE::get_next_eqn_item(const std::string& s, int i)
{
    if (i < 0 || static_cast<std::size_t>(i) >= s.size()) {
        return {};
    }
    int depth = 0;
    const auto first = s.begin() + i;
    const auto end_of_level = std::find_if(first, s.end(), [&depth](char character) {
        depth += character == '(' ? 1 : character == ')' ? -1 : 0;
        return depth < 0;
    });
    return {first, end_of_level};
}

std::string BOOL_TRUTH_TABLE::get_last_eqn_item(const std::string& s, int i)
{
    const auto length = static_cast<std::size_t>(std::max(i, -1) + std::ptrdiff_t{1});
    int depth = 0;
    const auto last = s.rend() - static_cast<std::ptrdiff_t>(std::min(length, s.size()));
    const auto start_of_level = std::find_if(last, s.rend(), [&depth](char character) {
        depth += character == ')' ? 1 : character == '(' ? -1 : 0;
        return depth < 0;
    });
    return {start_of_level.base(), last.base()};
}
