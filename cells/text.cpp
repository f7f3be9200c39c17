#include "basbdcells/text.h"

namespace basbdcells {

std::string printable(std::string_view text)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string line;
    for (const char c : text) {
        if (c >= ' ' && c <= '~') {
            line += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            line += {'\\', 'x', digits[byte / 16U], digits[byte % 16U]};
        }
    }
    return line;
}

std::string elide(std::string_view text, std::size_t limit)
{
    constexpr std::string_view dots = "...";
    if (text.size() <= limit) {
        return std::string(text);
    }
    if (limit <= dots.size()) {
        return std::string(text.substr(0, limit));
    }
    const std::size_t head = (limit - dots.size() + 1) / 2;
    const std::size_t tail = limit - dots.size() - head;
    std::string shorter(text.substr(0, head));
    return shorter.append(dots).append(text.substr(text.size() - tail));
}

std::string quoted(std::string_view text)
{
    return "'" + printable(elide(text, longest_quoted)) + "'";
}

} // namespace basbdcells
