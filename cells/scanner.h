/// @file
/// @brief Walks over a text that comes in blocks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace basbdcells {

/// What is wrong in a text, and on which line of it. It never leaves this library.
class text_error : public std::runtime_error {
public:
    text_error(int at_line, const std::string& message) : std::runtime_error(message), line(at_line)
    {
    }
    int line;
};

/// The next block of a text, empty at its end; the block before it may be gone.
using block_source = std::function<std::string_view()>;

/// What is passed over as a blank.
enum class comments {
    none,
    hash,   ///< from "#" to the end of the line
    c_style ///< between "/*" and "*/", from "//" to the end of the line; a backslash before it
            ///< makes a line end a blank
};

/// A set of characters.
class char_set {
public:
    constexpr explicit char_set(std::string_view members) : has{}
    {
        for (const char c : members) {
            has[static_cast<unsigned char>(c)] = true;
        }
    }
    constexpr bool contains(char c) const { return has[static_cast<unsigned char>(c)]; }
    constexpr char_set without(std::string_view members) const
    {
        char_set fewer = *this;
        for (const char c : members) {
            fewer.has[static_cast<unsigned char>(c)] = false;
        }
        return fewer;
    }
    constexpr char_set complemented() const
    {
        char_set others = *this;
        for (bool& each : others.has) {
            each = !each;
        }
        return others;
    }

private:
    bool has[256];
};

constexpr std::string_view blanks = " \t\r\n\v\f";

/// @brief Shows one character at a time, counts lines and cuts out words.
class scanner {
public:
    static constexpr int end = -1;

    /// @param more  gives the text; it may throw text_error
    scanner(block_source more, comments style) : refill(std::move(more)), passed(style) {}
    /// @param whole  the text, which outlives the scanner
    scanner(std::string_view whole, comments style, int first_line = 1)
        : block(whole), begin(whole.data()), passed(style), current_line(first_line)
    {
    }

    /// The next character; `end` behind the last one.
    int next()
    {
        return block.empty() && !fetch() ? end : static_cast<unsigned char>(block.front());
    }
    /// The next character behind blanks and comments.
    int peek();
    /// Takes the character that was shown; nothing at the end.
    void take();
    /// Takes it if it is `c`.
    bool take_if(char c);
    /// Passes blanks and comments, but no line end. @return whether there were any
    bool pass_blanks_of_line() { return pass(char_set(" \t\r\v\f")); }
    /// Passes the rest of the line, its end not included.
    void pass_line();

    /// @brief Takes the characters from here on that belong to `members`, and no comment.
    /// @param limit  further ones are taken but not kept
    std::string take_word(const char_set& members, std::size_t limit = std::string::npos);
    /// @brief Takes a string up to its quotation mark, the first of which has been taken. `\"`
    /// stands for a quotation mark, and a backslash before a line end goes with it.
    ///
    /// A string may go on over line ends. One whose mark is missing would end at the first mark of
    /// the next string, so a group that begins in it says that it was to end on its first line:
    /// what stands behind that is the next text again, and text_error is thrown, as it is when the
    /// text ends.
    /// @param limit  further characters are taken but not kept
    std::string take_string(std::size_t limit = std::string::npos);

    /// Makes what was taken the next text again.
    void put_back(std::string_view taken);

    /// The line of the next character, counted from 1.
    int line() const { return current_line; }
    void set_comments(comments style) { passed = style; }

private:
    bool fetch();
    int at(std::size_t place);
    bool starts_with(std::string_view text);
    bool is_continued();
    bool pass(const char_set& members);
    bool pass_comment();
    void advance(std::size_t count);

    void set_block(std::string text);

    std::string_view block;      ///< what is left of it
    const char* begin = nullptr; ///< of the whole block
    std::string joined;          ///< a block that begins with the rest of the one before
    block_source refill;
    comments passed;
    int current_line = 1;
};

/// A character as a message shows it.
std::string shown(int character);

} // namespace basbdcells
