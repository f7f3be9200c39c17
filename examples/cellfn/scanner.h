/// @file
/// @brief Cuts the text of a cell library into tokens.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace cellfn {

/// What is wrong in a text that the user wrote, and on which line of it.
class text_error : public std::runtime_error {
public:
    text_error(int at_line, const std::string& message) : std::runtime_error(message), line(at_line)
    {
    }
    int line;
};

/// @brief Walks over a text and counts its lines; comments run from "#" to the line's end.
class scanner {
public:
    explicit scanner(std::string_view text) : rest(text) {}

    /// Whether nothing but blanks, line ends and comments is left; passes them.
    bool at_end();
    /// The next character behind blanks, line ends and comments; 0 at the end.
    char peek();
    /// Takes the character that `peek` showed.
    void take();
    /// Takes the characters up to the next blank, "#", ";" or "=": a name or a number in a header.
    std::string_view take_field();
    /// Takes an identifier; empty where none starts.
    std::string_view take_identifier();
    /// The field that comes next, which stays where it is.
    std::string_view peek_field();
    /// The line of what `peek` shows, counted from 1.
    int line();

private:
    std::string_view take_while(bool (*belongs)(char));
    std::string_view rest;
    int current_line = 1;
};

} // namespace cellfn
