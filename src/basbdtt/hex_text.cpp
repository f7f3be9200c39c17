// The hexadecimal text of a column, in both directions.
#include "column_words.h"
#include "ut_text.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace basbdtt;

constexpr std::size_t word_digits = 8;
constexpr unsigned no_digit = 16;

constexpr unsigned digit_value(char c)
{
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    const int letter = static_cast<unsigned char>(c) | 0x20;
    return letter >= 'a' && letter <= 'f' ? static_cast<unsigned>(letter - 'a') + 10 : no_digit;
}

/// Digits of a column of `bit_count` bits.
constexpr std::size_t digits_for_bits(std::int32_t bit_count)
{
    return bit_count <= 0 ? 0 : (static_cast<std::size_t>(bit_count) + 3) / 4;
}

/// Tells the user about the first character, from the last backwards, that cannot be stored.
void report_misuse(std::string_view text, std::size_t digits, int width)
{
    for (std::size_t k = 0; k < text.size(); ++k) {
        const char c = text[text.size() - 1 - k];
        if (digit_value(c) == no_digit) {
            const bool printable = c >= ' ' && c <= '~';
            ut_status(neoform(printable ? "Unexpected hexadecimal digit '%c'"
                                        : "Unexpected hexadecimal digit '\\x%02X'",
                              static_cast<unsigned char>(c)));
            return;
        }
        if (k >= digits && c != '0') {
            ut_status(neoform("Hexadecimal digit '%c' beyond the %zu digits of width %d", c, digits,
                              width));
            return;
        }
    }
}

/// @return whether `text` was stored; otherwise nothing has changed and the user was told
bool read_hex(TRUTH_TABLE_VAL& value, int width, std::string_view text)
{
    const std::int32_t old_bit_count = value.bit_count;
    value.bit_count = std::int32_t{1} << width;
    std::vector<std::uint32_t> words(words_for_width(width));
    const std::size_t digits = digits_for_bits(value.bit_count);
    unsigned misuse = 0;
    for (std::size_t k = 0; k < text.size(); ++k) {
        const unsigned digit = digit_value(text[text.size() - 1 - k]);
        misuse |= digit & no_digit;
        if (k < digits) {
            words[k / word_digits] |= digit << (4 * k % 32);
        } else {
            misuse |= digit;
        }
    }
    if (misuse != 0) {
        value.bit_count = old_bit_count;
        report_misuse(text, digits, width);
        return false;
    }
    value.words.swap(words);
    return true;
}

} // namespace

std::string TRUTH_TABLE_VAL::get_hex_string() const
{
    const std::size_t digits = digits_for_bits(bit_count);
    std::string text(digits, '0');
    for (std::size_t k = 0; k < std::min(digits, words.size() * word_digits); ++k) {
        unsigned digit = (words[k / word_digits] >> (4 * k % 32)) & 15U;
        if (k + 1 == digits && bit_count % 4 != 0) {
            digit &= (1U << (bit_count % 4)) - 1;
        }
        text[digits - 1 - k] = "0123456789ABCDEF"[digit];
    }
    return text;
}

void TRUTH_TABLE_VAL::set_from_hex_string(int width, const std::string& text)
{
    basbd_require(width >= 0, "width>=0", __PRETTY_FUNCTION__);
    basbd_require(width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    read_hex(*this, width, text);
}

void BOOL_TRUTH_TABLE::set_value_from_hex_string(int new_width, const std::string& text)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    const signed char old_width = width;
    width = static_cast<signed char>(new_width);
    const bool prefixed = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    if (!read_hex(value, new_width, std::string_view(text).substr(prefixed ? 2 : 0))) {
        width = old_width;
    }
}
