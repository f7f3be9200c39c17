#include "scanner.h"

#include "basbdcells/text.h"

#include <utility>

namespace basbdcells {

bool scanner::fetch()
{
    if (refill) {
        block = refill();
    }
    if (block.empty()) {
        refill = nullptr;
    }
    return !block.empty();
}

void scanner::advance(std::size_t count)
{
    current_line += static_cast<int>(
        std::count(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count), '\n'));
    block.remove_prefix(count);
}

void scanner::take()
{
    if (next() != end) {
        advance(1);
    }
}

bool scanner::take_if(char c)
{
    const bool is_next = next() == static_cast<unsigned char>(c);
    if (is_next) {
        advance(1);
    }
    return is_next;
}

bool scanner::starts_with(std::string_view text)
{
    while (block.size() < text.size() && refill) {
        std::string longer(block);
        if (fetch()) {
            longer.append(block);
        }
        joined = std::move(longer);
        block = joined;
    }
    return block.substr(0, text.size()) == text;
}

void scanner::pass_line()
{
    while (next() != end && next() != '\n') {
        advance(std::min(block.find('\n'), block.size()));
    }
}

/// Passes one comment, or a line end behind a backslash. @return whether there was one
bool scanner::pass_comment()
{
    const char c = block.front();
    if (passed == comments::hash ? c == '#' : passed == comments::c_style && starts_with("//")) {
        pass_line();
        return true;
    }
    if (passed != comments::c_style || (c != '/' && c != '\\')) {
        return false;
    }
    if (c == '\\') {
        const bool is_continued = starts_with("\\\n") || starts_with("\\\r\n");
        if (is_continued) {
            pass_line();
            take();
        }
        return is_continued;
    }
    if (!starts_with("/*")) {
        return false;
    }
    const int first_line = current_line;
    advance(2);
    while (!starts_with("*/")) {
        if (next() == end) {
            throw text_error(first_line, "comment without an end");
        }
        advance(std::min(std::max<std::size_t>(block.find('*', 1), 1), block.size()));
    }
    advance(2);
    return true;
}

void scanner::pass(const char_set& members)
{
    while (next() != end) {
        const auto* const stop = std::find_if_not(block.begin(), block.end(),
                                                  [&](char c) { return members.contains(c); });
        advance(static_cast<std::size_t>(stop - block.begin()));
        if (!block.empty() && !pass_comment()) {
            return;
        }
    }
}

int scanner::peek()
{
    constexpr char_set all_blanks(blanks);
    pass(all_blanks);
    return next();
}

std::string scanner::take_word(const char_set& members, std::size_t limit)
{
    std::string word;
    while (next() != end && members.contains(block.front())) {
        if (passed == comments::c_style && (starts_with("/*") || starts_with("//"))) {
            break;
        }
        const auto* const stop = std::find_if_not(block.begin() + 1, block.end(), [&](char c) {
            return members.contains(c) && c != '/';
        });
        const auto length = static_cast<std::size_t>(stop - block.begin());
        word.append(block.substr(0, std::min(length, limit - word.size())));
        advance(length);
    }
    return word;
}

std::string scanner::take_string(std::size_t limit)
{
    const int first_line = current_line;
    std::string text;
    const auto keep = [&](std::size_t count) {
        text.append(block.substr(0, std::min(count, limit - text.size())));
        advance(count);
    };
    while (next() != end) {
        const std::size_t quote = std::min(block.find('"'), block.size());
        keep(std::min(block.substr(0, quote).find('\\'), quote));
        if (block.empty()) {
            continue;
        }
        if (take_if('"')) {
            return text;
        }
        if (starts_with("\\\n") || starts_with("\\\r\n")) {
            pass_line();
            take();
        } else if (starts_with("\\\"")) {
            advance(1);
            keep(1);
        } else {
            keep(starts_with("\\\\") ? 2 : 1);
        }
    }
    throw text_error(first_line, "string without an end");
}

void scanner::put_back(std::string_view word)
{
    std::string longer(word);
    joined = std::move(longer.append(block));
    block = joined;
}

std::string shown(int character)
{
    return character == scanner::end
               ? "the end of the text"
               : "'" + printable(std::string(1, static_cast<char>(character))) + "'";
}

} // namespace basbdcells
