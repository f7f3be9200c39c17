#include "text.h"

#include <string_view>

namespace cellfn {

namespace {

std::string hexadecimal(char character)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(character);
    return {'\\', 'x', digits[byte / 16], digits[byte % 16]};
}

bool is_printable(char character) { return character >= ' ' && character <= '~'; }

} // namespace

std::string elide(const std::string& text, std::size_t limit)
{
    constexpr std::size_t dots = 3;
    if (text.size() <= limit) {
        return text;
    }
    const std::size_t head = (limit - dots + 1) / 2;
    const std::size_t tail = limit - dots - head;
    return text.substr(0, head) + "..." + text.substr(text.size() - tail);
}

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& each : words) {
        text += (text.empty() ? "" : " ") + each;
    }
    return text;
}

std::string shown(char character)
{
    if (character == '\0') {
        return "the end of the text";
    }
    return "'" + ascii(std::string(1, character)) + "'";
}

std::string ascii(const std::string& message)
{
    std::string text;
    for (const char c : message) {
        text += is_printable(c) ? std::string(1, c) : hexadecimal(c);
    }
    return text;
}

std::string one_line(const std::string& message)
{
    std::string line;
    for (const char c : message) {
        const bool is_above_ascii = static_cast<unsigned char>(c) > '\x7F';
        line += is_printable(c) || is_above_ascii ? std::string(1, c) : hexadecimal(c);
    }
    return line;
}

} // namespace cellfn
