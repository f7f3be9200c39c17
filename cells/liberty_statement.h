/// @file
/// @brief Cuts a statement of a Liberty text into its parts.
#pragma once

#include "basbdcells/text.h"
#include "scanner.h"

#include <cstddef>
#include <string>
#include <vector>

namespace basbdcells {

/// Of what is passed over only this much is kept, to be named in a message.
constexpr std::size_t longest_passed = 2 * longest_quoted;

/// Takes the name of a statement, bare or as a string. @return empty when there is none
std::string take_name(scanner& text);

/// @brief Takes the value of an attribute: a string, or up to ";" or, where that is missing, to the
/// end of the line or the next attribute.
///
/// A word, a number, or an expression, which may go on behind an operator at a line's end.
/// @param limit  further characters are taken but not kept, but for a few of what is no string
std::string take_value(scanner& text, std::size_t limit);

/// What stands in parentheses.
struct arguments {
    std::vector<std::string> words;
    std::string fault; ///< what was wrong; the words before it are there
};

/// @brief Takes arguments up to their ")", the "(" of which has been taken.
/// @param most  further words are taken but not kept
arguments take_arguments(scanner& text, std::size_t most);

/// @brief Passes the rest of a statement that could not be read: up to ";" or the line's end.
/// @return whether a group has begun in it, up to the inside of which it is passed
bool pass_statement(scanner& text);

/// The words in a string, with blanks or commas between them.
std::vector<std::string> names_in(const std::string& list);

} // namespace basbdcells
