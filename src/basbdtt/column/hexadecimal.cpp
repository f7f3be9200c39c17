// The hexadecimal text of a column, in both directions.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/function_clones.h"
#include "ut_text.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace basbdtt;

constexpr std::size_t word_digits = 8;

/// @brief What is converted at a time.
///
/// Text and column run in opposite directions: the last two digits are the column's first byte.
/// The loops between digits and words take a whole chunk, many digits at a step, and never meet an
/// end of either.
constexpr std::size_t chunk_size = 256;
constexpr std::size_t chunk_digits = chunk_size * word_digits;
using chunk_words = std::array<std::uint32_t, chunk_size>;
using chunk_text = std::array<char, chunk_digits>;

/// Digits of a column of `bit_count` bits.
constexpr std::size_t digits_for_bits(std::int32_t bit_count)
{
    return bit_count <= 0 ? 0 : (static_cast<std::size_t>(bit_count) + 3) / 4;
}

/// The digits of `count` words.
BASBDTT_CLONES void write_digits(const std::uint32_t* words, std::size_t count, char* text)
{
    const std::size_t size = count * sizeof *words;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(words);
    for (std::size_t i = 0; i < size; ++i) {
        const unsigned byte = bytes[size - 1 - i];
        const unsigned halves = byte >> 4U | (byte & 15U) << 8U;
        const unsigned letters = (halves + 0x0606U) >> 4U & 0x0101U;
        const auto digits =
            static_cast<std::uint16_t>(halves + 0x3030U + letters * ('A' - '9' - 1));
        std::memcpy(text + 2 * i, &digits, sizeof digits);
    }
}

/// The words that as many times eight digits stand for. The low half of a letter is its place in
/// the alphabet, and only letters have bit 6. The product has both digits of a byte in its upper
/// byte.
BASBDTT_CLONES void read_digits(const char* text, std::size_t count, std::uint32_t* words)
{
    const std::size_t size = count * sizeof *words;
    auto* const bytes = reinterpret_cast<unsigned char*>(words);
    for (std::size_t i = 0; i < size; ++i) {
        std::uint16_t digits = 0;
        std::memcpy(&digits, text + 2 * i, sizeof digits);
        const auto halves =
            static_cast<std::uint16_t>((digits & 0x0F0FU) + 9U * (digits >> 6U & 0x0101U));
        const auto product = static_cast<std::uint16_t>(halves * 0x1001U);
        bytes[size - 1 - i] = static_cast<std::uint8_t>(product >> 8U);
    }
}

/// Whether all characters are digits.
BASBDTT_CLONES bool all_digits(const char* text, std::size_t size)
{
    constexpr std::uint8_t last_digit = 9;
    constexpr std::uint8_t last_letter = 5;
    std::uint8_t others = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const auto c = static_cast<std::uint8_t>(text[i]);
        const auto digit = static_cast<std::uint8_t>(c - '0');
        const auto letter = static_cast<std::uint8_t>((c | 0x20U) - 'a');
        const auto past_digits =
            static_cast<std::uint8_t>(std::max(digit, last_digit) - last_digit);
        const auto past_letters =
            static_cast<std::uint8_t>(std::max(letter, last_letter) - last_letter);
        others = static_cast<std::uint8_t>(others | std::min(past_digits, past_letters));
    }
    return others == 0;
}

constexpr bool is_digit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

/// Tells the user about the first character, from the last backwards, that cannot be stored.
void report_misuse(std::string_view text, std::size_t digits, int width)
{
    for (std::size_t k = 0; k < text.size(); ++k) {
        const char c = text[text.size() - 1 - k];
        if (!is_digit(c)) {
            ut_status(neoform("Unexpected hexadecimal digit '%c'", static_cast<unsigned char>(c)));
            return;
        }
        if (k >= digits && c != '0') {
            ut_status(neoform("Hexadecimal digit '%c' beyond the column of width %d", c, width));
            return;
        }
    }
}

/// @brief The part of a text that is to be stored: without a leading part beyond the column.
/// @return whether there is one; otherwise the user was told why not
bool find_column(std::string_view& text, int width)
{
    const std::size_t digits = digits_for_bits(std::int32_t{1} << width);
    const std::size_t beyond = text.size() - std::min(text.size(), digits);
    const std::string_view column = text.substr(beyond);
    if (text.substr(0, beyond).find_first_not_of('0') != std::string_view::npos ||
        !all_digits(column.data(), column.size())) {
        report_misuse(text, digits, width);
        return false;
    }
    text = column;
    return true;
}

/// Appends the words that the digits of `text` stand for, its last digit first.
void append_words(std::vector<std::uint32_t>& words, std::string_view text)
{
    chunk_text digits;  // NOLINT(*-member-init): filled before use
    chunk_words result; // NOLINT(*-member-init): filled before use
    while (!text.empty()) {
        const std::size_t taken = std::min(text.size(), chunk_digits);
        const std::size_t count = (taken + word_digits - 1) / word_digits;
        const std::size_t missing = count * word_digits - taken;
        const char* source = text.data() + text.size() - taken;
        if (missing != 0) {
            std::fill_n(digits.begin(), missing, '0');
            std::copy_n(source, taken, digits.begin() + missing);
            source = digits.data();
        }
        read_digits(source, count, result.data());
        words.insert(words.end(), result.data(), result.data() + count);
        text.remove_suffix(taken);
    }
}

/// Stores what `find_column` left.
void store_column(TRUTH_TABLE_VAL& value, int width, std::string_view text)
{
    value.bit_count = std::int32_t{1} << width; // stays when the allocation fails
    std::vector<std::uint32_t> words;
    words.reserve(words_for_width(width));
    append_words(words, text);
    words.resize(words_for_width(width));
    value.words.swap(words);
}

/// @brief Fills `result` with the meaningful words from word `start` on.
///
/// Words that are missing count as zero.
/// @return the words themselves where they lie in the column as they are needed
const std::uint32_t* meaningful_words(const TRUTH_TABLE_VAL& value, std::size_t start,
                                      std::size_t count, chunk_words& result)
{
    const std::size_t bits = static_cast<std::size_t>(value.bit_count) - start * 32;
    if (start + count <= value.words.size() && count * 32 <= bits) {
        return value.words.data() + start;
    }
    for (std::size_t i = 0; i < count; ++i) {
        result[i] = start + i < value.words.size() ? value.words[start + i] : 0;
    }
    if (bits < count * 32) {
        result[count - 1] &= (1U << bits % 32) - 1;
    }
    return result.data();
}

} // namespace

std::string TRUTH_TABLE_VAL::get_hex_string() const
{
    const std::size_t digits = digits_for_bits(bit_count);
    std::string text;
    text.reserve(digits);
    chunk_words copy; // NOLINT(*-member-init): filled before use
    chunk_text chunk; // NOLINT(*-member-init): filled before use
    std::size_t end = (digits + word_digits - 1) / word_digits;
    std::size_t unused = end * word_digits - digits; // digits that the last word has too many
    while (end > 0) {
        const std::size_t count = std::min(end, chunk_size);
        end -= count;
        write_digits(meaningful_words(*this, end, count, copy), count, chunk.data());
        text.append(chunk.data() + unused, count * word_digits - unused);
        unused = 0;
    }
    return text;
}

void TRUTH_TABLE_VAL::set_from_hex_string(int width, const std::string& text)
{
    basbd_require(width >= 0, "width>=0", __PRETTY_FUNCTION__);
    basbd_require(width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    std::string_view column = text;
    if (find_column(column, width)) {
        store_column(*this, width, column);
    }
}

void BOOL_TRUTH_TABLE::set_value_from_hex_string(int new_width, const std::string& text)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    const bool prefixed = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    std::string_view column = std::string_view(text).substr(prefixed ? 2 : 0);
    if (find_column(column, new_width)) {
        width = static_cast<signed char>(new_width); // stays when the allocation fails
        store_column(value, new_width, column);
    }
}
