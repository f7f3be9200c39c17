#include "scanner.h"

#include "basbdcells/text.h"

#include <utility>

namespace basbdcells {

bool scanner::fetch()
{
    if (refill) {
        block = refill();
        begin = block.data();
    }
    if (block.empty()) {
        refill = nullptr;
    }
    return !block.empty();
}

void scanner::set_block(std::string text)
{
    joined = std::move(text);
    block = joined;
    begin = block.data();
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

/// The character so many behind the next one.
int scanner::at(std::size_t place)
{
    while (block.size() <= place && refill) {
        std::string longer(block);
        if (fetch()) {
            longer.append(block);
        }
        set_block(std::move(longer));
    }
    return place < block.size() ? static_cast<unsigned char>(block[place]) : end;
}

bool scanner::starts_with(std::string_view text)
{
    return at(text.size() - 1) != end && block.substr(0, text.size()) == text;
}

/// Whether the line goes on behind its end: there stands a backslash, and by oversight blanks.
bool scanner::is_continued()
{
    constexpr std::size_t most_blanks = 80;
    std::size_t place = 0;
    if (at(place) == '\\') {
        do {
            ++place;
        } while (place < most_blanks &&
                 (at(place) == ' ' || at(place) == '\t' || at(place) == '\r'));
    }
    return at(place) == '\n' && place > 0;
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
        const bool is_passed = is_continued();
        if (is_passed) {
            pass_line();
            take();
        }
        return is_passed;
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

bool scanner::pass(const char_set& members)
{
    bool any = false;
    while (next() != end) {
        const auto* const stop = std::find_if_not(block.begin(), block.end(),
                                                  [&](char c) { return members.contains(c); });
        any |= stop != block.begin();
        advance(static_cast<std::size_t>(stop - block.begin()));
        if (!block.empty()) {
            if (!pass_comment()) {
                break;
            }
            any = true;
        }
    }
    return any;
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

namespace {

/// What a string has behind its first line end, as long as it may have to be put back.
class lines_of_string {
public:
    void begin() { is_kept = true; }
    void add(std::string_view piece)
    {
        is_kept = is_kept && text.size() + piece.size() <= longest;
        if (is_kept) {
            text += piece;
        }
    }
    /// Whether a "{" behind a ")" is among the last characters.
    bool has_group(std::size_t last) const
    {
        for (std::size_t at = text.find('{', text.size() - std::min(last, text.size()));
             at != std::string::npos; at = text.find('{', at + 1)) {
            const std::size_t before = text.find_last_not_of(blanks, at == 0 ? 0 : at - 1);
            if (before != std::string::npos && text[before] == ')') {
                return true;
            }
        }
        return false;
    }
    bool can_be_put_back() const { return is_kept; }
    const std::string& kept() const { return text; }

private:
    static constexpr std::size_t longest = 4096; ///< a string of more is no slip
    std::string text;
    bool is_kept = false;
};

/// How much of a string's text is nothing but text.
std::size_t length_of_plain_text(std::string_view text)
{
    for (const char c : {'"', '\n', '\\'}) { // few are left to the last one
        text = text.substr(0, text.find(c));
    }
    return text.size();
}

} // namespace

std::string scanner::take_string(std::size_t limit)
{
    const int first_line = current_line;
    std::string text;
    lines_of_string behind;
    const auto pass = [&](std::size_t count) {
        behind.add(block.substr(0, count));
        advance(count);
    };
    const auto keep = [&](std::size_t count) {
        text.append(block.substr(0, std::min(count, limit - text.size())));
        pass(count);
    };
    while (next() != end) {
        const std::size_t plain = length_of_plain_text(block);
        keep(plain);
        if (behind.can_be_put_back() && behind.has_group(plain)) {
            break;
        }
        const char c = block.empty() ? '\0' : block.front();
        if (c == '"') {
            advance(1);
            return text;
        }
        if (c == '\n') {
            keep(1);
            behind.begin();
        } else if (c == '\\' && is_continued()) {
            pass(block.find('\n') + 1);
        } else if (c == '\\' && starts_with("\\\"")) {
            pass(1);
            keep(1);
        } else if (c == '\\') {
            keep(starts_with("\\\\") ? 2 : 1);
        }
    }
    if (behind.can_be_put_back()) {
        put_back(behind.kept());
    }
    throw text_error(first_line, "string without an end");
}

void scanner::put_back(std::string_view taken)
{
    current_line -= static_cast<int>(std::count(taken.begin(), taken.end(), '\n'));
    const std::string_view before(begin, static_cast<std::size_t>(block.data() - begin));
    if (before.size() >= taken.size() &&
        before.substr(before.size() - taken.size()) == taken) { // as a rule: no copy
        block = {block.data() - taken.size(), block.size() + taken.size()};
    } else {
        set_block(std::string(taken).append(block));
    }
}

std::string shown(int character)
{
    return character == scanner::end
               ? "the end of the text"
               : "'" + printable(std::string(1, static_cast<char>(character))) + "'";
}

} // namespace basbdcells
