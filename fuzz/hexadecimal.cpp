// Hexadecimal text, digit by digit: a byte for the width, then the text.

#include "basbdtt.h"
#include "fuzz.h"
#include "quiet_host.h"

#include <algorithm>
#include <vector>

namespace {

int value_of_digit(char digit)
{
    const std::string digits = "0123456789ABCDEFabcdef";
    const std::size_t place = digits.find(digit);
    return place == std::string::npos ? -1 : static_cast<int>(place < 16 ? place : place - 6);
}

/// The words of the column. @return whether the text has any
bool define(std::vector<std::uint32_t>& words, int width, const std::string& text)
{
    const std::size_t columns = std::max((std::size_t{1} << width) / 4, std::size_t{1});
    std::vector<std::uint32_t> result((columns + 7) / 8);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int digit = value_of_digit(text[text.size() - 1 - i]);
        if (digit < 0 || (digit > 0 && i >= columns)) {
            return false;
        }
        if (i < columns) {
            result[i / 8] |= static_cast<std::uint32_t>(digit) << i % 8 * 4;
        }
    }
    words = result;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz_input input(data, size);
    const int width = static_cast<int>(input.below(10));
    const std::string text = input.rest();
    TRUTH_TABLE_VAL value(7, 1);
    std::vector<std::uint32_t> expected = value.words;
    value.set_from_hex_string(width, text);
    const bool is_read = define(expected, width, text);
    check(quiet_host::take_statuses() == (is_read ? 0 : 1), "one message for a refused text");
    check(value.words == expected, "the digits of the text");
    check(value.bit_count == (is_read ? 1 << width : 128), "the entries of the width");
    if (is_read && width > 1) {
        TRUTH_TABLE_VAL back(1, 0);
        back.set_from_hex_string(width, value.get_hex_string());
        check(back.words == value.words, "what is written reads back");
    }
    BOOL_TRUTH_TABLE table;
    table.set_value_from_hex_string(width + 1, text);
    check((quiet_host::take_statuses() == 0) == (table.width == width + 1),
          "a table with a prefix");
    return 0;
}
