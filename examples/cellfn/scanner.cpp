#include "scanner.h"

#include <algorithm>
#include <cstddef>

namespace cellfn {

namespace {

constexpr std::string_view blanks = " \t\r\n\v\f";

bool is_header_field(char c)
{
    return blanks.find(c) == std::string_view::npos && c != '#' && c != ';' && c != '=';
}

bool is_identifier(char c)
{
    const bool is_letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    constexpr std::string_view others = "_[]<>.:$";
    return is_letter || (c >= '0' && c <= '9') || others.find(c) != std::string_view::npos;
}

} // namespace

bool scanner::at_end()
{
    for (bool in_comment = false; !rest.empty(); rest.remove_prefix(1)) {
        const char c = rest.front();
        if (c == '\n') {
            ++current_line;
        }
        in_comment = c == '#' || (in_comment && c != '\n');
        if (!in_comment && blanks.find(c) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

char scanner::peek() { return at_end() ? '\0' : rest.front(); }

void scanner::take() { rest.remove_prefix(std::min<std::size_t>(rest.size(), 1)); }

std::string_view scanner::take_while(bool (*belongs)(char))
{
    at_end();
    const auto* end = std::find_if_not(rest.begin(), rest.end(), belongs);
    const std::string_view taken = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(taken.size());
    return taken;
}

std::string_view scanner::take_field() { return take_while(is_header_field); }

std::string_view scanner::take_identifier() { return take_while(is_identifier); }

std::string_view scanner::peek_field() { return scanner(*this).take_field(); }

int scanner::line()
{
    at_end();
    return current_line;
}

} // namespace cellfn
