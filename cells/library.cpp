#include "basbdcells/library.h"

#include "basbdcells/text.h"
#include "block_sources.h"
#include "diagnostics.h"
#include "genlib.h"
#include "liberty.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace basbdcells {

namespace {

void add_note(library& to, int line, const std::string& message)
{
    to.diagnostics.push_back({line, "note: " + message, false});
}

/// Whether the text is Liberty: a comment in C's style, the word "library", or one before a "(".
bool is_liberty(scanner& text)
{
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    for (const char c : byte_order_mark) {
        text.take_if(c);
    }
    if (text.peek() == '/') {
        return true;
    }
    constexpr std::size_t longest = 64;
    const std::string word = text.take_word(char_set(" \t\r\n\v\f(").complemented(), longest);
    if (word == "library") { // whatever blanks of Liberty come behind it
        text.put_back(word);
        return true;
    }
    const bool is_group = word.size() < longest && text.peek() == '(';
    text.put_back(word + (is_group ? "" : " "));
    return is_group && word != "GATE" && word != "LATCH";
}

/// Notes on what is allowed but hardly meant.
void note_oddities(library& read)
{
    std::unordered_map<std::string_view, int> first_lines;
    for (const cell& each : read.cells) {
        const std::string place = "cell " + shown_name(each.name) + ": ";
        const auto [first, is_new] = first_lines.try_emplace(each.name, each.line);
        if (!is_new) {
            add_note(read, each.line,
                     place + "a cell of this name stands on line " + std::to_string(first->second));
        }
        for (const output& drives : each.outputs) {
            const std::vector<std::string>& inputs = drives.function.pins;
            if (std::find(inputs.begin(), inputs.end(), drives.name) != inputs.end()) {
                add_note(read, each.line,
                         place + "pin " + shown_name(drives.name) + " is output and input");
            }
        }
    }
    const bool has_output = std::any_of(read.cells.begin(), read.cells.end(),
                                        [](const cell& each) { return !each.outputs.empty(); });
    if (!has_output && !read.has_error()) {
        add_note(read, 0, "no cell has an output that is a function of its inputs");
    }
}

library read_blocks(block_source blocks)
{
    library read;
    try {
        scanner text(std::move(blocks), comments::hash);
        if (is_liberty(text)) {
            text.set_comments(comments::c_style);
            read_liberty(text, read);
        } else if (text.peek() == scanner::end) {
            read.diagnostics.push_back({0, "expected at least one GATE", true});
        } else {
            read_genlib(text, read);
        }
    } catch (const text_error& error) {
        read.diagnostics.push_back({error.line, error.what(), true});
    }
    note_oddities(read);
    return read;
}

} // namespace

library read_library(std::string_view text) { return read_blocks(blocks_of_text(text)); }

library read_library_file(const std::string& path)
{
    block_source blocks = blocks_of_file(path);
    if (!blocks) {
        library failed;
        failed.diagnostics.push_back(
            {0, "cannot be read: " + std::generic_category().message(errno), true});
        return failed;
    }
    return read_blocks(std::move(blocks));
}

} // namespace basbdcells
