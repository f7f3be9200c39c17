#include "liberty_statement.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace basbdcells {

namespace {

constexpr char_set value_characters = char_set(" \t\r\n\v\f\"{}();").complemented();
constexpr char_set argument_characters = value_characters.without(",");
constexpr char_set name_of_statement = argument_characters.without(":=");

bool ends_in_operator(const std::string& value)
{
    return !value.empty() && std::string_view("+-*/").find(value.back()) != std::string_view::npos;
}

/// Takes what stands up to the end of the line or the next attribute.
std::string take_bare_value(scanner& text, std::size_t limit)
{
    limit = std::max(limit, longest_passed);
    std::string value;
    bool is_apart = false; // blanks stand before what comes
    for (int c = text.next(); c != scanner::end; c = text.next()) {
        const bool goes_on = ends_in_operator(value);
        if (c == ';' || c == '{' || c == '}' || c == '"' || (c == '\n' && !goes_on)) {
            break;
        }
        const std::size_t room = limit - std::min(limit, value.size());
        std::string piece = text.take_word(value_characters, std::max(room, longest_passed));
        if (piece.empty()) {
            text.take(); // a parenthesis or a line end
            piece.append(c == '\n' ? 0 : 1, static_cast<char>(c));
        }
        const bool was_apart = std::exchange(is_apart, text.pass_blanks_of_line());
        if (was_apart && !goes_on && (text.next() == ':' || piece.find(':') < piece.size())) {
            text.put_back(piece); // the next attribute; the ";" before it is missing
            break;
        }
        value.append(was_apart ? 1 : 0, ' ').append(piece, 0, room);
    }
    return value;
}

/// The next word or string, empty where there is neither.
std::string take_operand(scanner& text, const char_set& members, std::size_t limit)
{
    return text.take_if('"') ? text.take_string(limit) : text.take_word(members, limit);
}

} // namespace

std::string take_name(scanner& text)
{
    return take_operand(text, name_of_statement, longest_passed);
}

std::string take_value(scanner& text, std::size_t limit)
{
    return text.peek() == '"' ? take_operand(text, value_characters, limit)
                              : take_bare_value(text, limit);
}

arguments take_arguments(scanner& text, std::size_t most)
{
    arguments read;
    std::size_t depth = 0; // of parentheses inside
    std::string word;
    bool is_first_on_line = false; // the word
    while (true) {
        const int line = text.line();
        const int c = text.peek();
        if (c == scanner::end || c == '{' || c == '}' || c == ';') {
            read.fault = "expected ')' before " + shown(c);
            return read;
        }
        if (c == '(' && is_first_on_line) { // the next statement has come
            text.put_back(word);
            if (!read.words.empty() && read.words.back() == word) {
                read.words.pop_back();
            }
            read.fault = "expected ')' before " + quoted(word);
            return read;
        }
        is_first_on_line = false;
        if (text.take_if(')')) {
            if (depth == 0) {
                return read;
            }
            --depth;
        } else if (text.take_if('(')) {
            ++depth;
        } else if (!text.take_if(',')) {
            is_first_on_line = c != '"' && text.line() > line;
            const std::size_t limit = read.words.size() < most ? std::string::npos
                                      : c == '"'               ? 0
                                                               : longest_passed;
            word = take_operand(text, argument_characters, limit);
            if (read.words.size() < most) {
                read.words.push_back(word);
            }
        }
    }
}

bool pass_statement(scanner& text)
{
    for (int c = text.next(); c != scanner::end && c != '}'; c = text.next()) {
        text.take();
        if (c == '{') {
            return true;
        }
        if (c == '"') {
            text.take_string(0);
        } else if (c == ';' || c == '\n') {
            break;
        }
    }
    return false;
}

std::vector<std::string> names_in(const std::string& list)
{
    constexpr char_set name_of_list = char_set(" \t\r\n\v\f,").complemented();
    std::vector<std::string> names;
    scanner words(list, comments::none);
    while (words.peek() != scanner::end) {
        if (!words.take_if(',')) {
            names.push_back(words.take_word(name_of_list));
        }
    }
    return names;
}

} // namespace basbdcells
