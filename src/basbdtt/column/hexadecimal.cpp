// The hexadecimal text of a column, in both directions.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/function_clones.h"
#include "ut_text.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace basbdtt;

constexpr std::size_t word_digits = 8;

/// @brief Words that are converted at a time.
///
/// Text and column run in opposite directions: the last two digits are the column's first byte. The
/// result is lengthened piece by piece, and a piece is still in the nearest cache when the zeros
/// that it gets first are replaced. The loops take many digits at a step and whole words only.
constexpr std::size_t piece_words = 256;

/// Digits of a column of `bit_count` bits.
constexpr std::size_t digits_for_bits(std::int32_t bit_count)
{
    return bit_count <= 0 ? 0 : (static_cast<std::size_t>(bit_count) + 3) / 4;
}

/// Eight digits of the value 1, a byte each.
constexpr std::uint64_t each_digit = 0x0101010101010101;

/// The digits of a word as they lie in memory. A digit past 9 overflows when 6 is added.
std::uint64_t digits_of(std::uint32_t word)
{
    std::uint64_t halves = word;
    halves = (halves | halves << 16U) & 0x0000FFFF0000FFFF;
    halves = (halves | halves << 8U) & 0x00FF00FF00FF00FF;
    halves = (halves | halves << 4U) & 0x0F0F0F0F0F0F0F0F;
    const std::uint64_t letters = (halves + 6 * each_digit) >> 4U & each_digit;
    return __builtin_bswap64(halves + '0' * each_digit + letters * ('A' - '9' - 1));
}

/// The word that eight digits stand for. The low half of a letter is its place in the alphabet, and
/// only letters have bit 6.
std::uint32_t word_of(std::uint64_t digits)
{
    digits = __builtin_bswap64(digits);
    std::uint64_t halves = (digits & 15 * each_digit) + 9 * (digits >> 6U & each_digit);
    halves = (halves | halves >> 4U) & 0x00FF00FF00FF00FF;
    halves = (halves | halves >> 8U) & 0x0000FFFF0000FFFF;
    return static_cast<std::uint32_t>(halves | halves >> 16U);
}

/// Whether eight characters are digits: all others are not what is written for them. Bit 5 is the
/// case of a letter.
bool are_digits(std::uint64_t text)
{
    const std::uint64_t written = digits_of(word_of(text));
    const std::uint64_t letter_case = written >> 1U & ('a' - 'A') * each_digit;
    return ((text ^ written) & ~letter_case) == 0;
}

std::uint64_t load_digits(const char* text)
{
    std::uint64_t digits = 0;
    std::memcpy(&digits, text, sizeof digits);
    return digits;
}

void store_digits(char* text, std::uint64_t digits) { std::memcpy(text, &digits, sizeof digits); }

/// The digits of `count` words.
BASBDTT_CLONES void write_digits(const std::uint32_t* words, std::size_t count, char* text)
{
    for (std::size_t i = 0; i < count; ++i) {
        store_digits(text + word_digits * i, digits_of(words[count - 1 - i]));
    }
}

/// The words that as many times eight digits stand for.
BASBDTT_CLONES void read_digits(const char* text, std::size_t count, std::uint32_t* words)
{
    for (std::size_t i = 0; i < count; ++i) {
        words[count - 1 - i] = word_of(load_digits(text + word_digits * i));
    }
}

/// Whether all characters are digits, many at a step.
BASBDTT_CLONES bool all_digits_in(const char* text, std::size_t size)
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

/// The texts of widths 5 and 6 take less than the call for longer ones.
bool all_digits(std::string_view text)
{
    switch (text.size()) {
    case word_digits:
        return are_digits(load_digits(text.data()));
    case 2 * word_digits:
        return are_digits(load_digits(text.data())) &&
               are_digits(load_digits(text.data() + word_digits));
    default:
        return all_digits_in(text.data(), text.size());
    }
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
        !all_digits(column)) {
        report_misuse(text, digits, width);
        return false;
    }
    text = column;
    return true;
}

/// Appends the words that the digits of `text` stand for, its last digit first.
void append_words(std::vector<std::uint32_t>& words, std::string_view text)
{
    while (text.size() >= word_digits) {
        const std::size_t count = std::min(text.size() / word_digits, piece_words);
        const std::size_t start = words.size();
        words.resize(start + count);
        read_digits(text.data() + text.size() - count * word_digits, count, words.data() + start);
        text.remove_suffix(count * word_digits);
    }
    if (!text.empty()) {
        std::array<char, word_digits> digits{};
        digits.fill('0');
        std::copy(text.begin(), text.end(), digits.end() - text.size());
        words.push_back(word_of(load_digits(digits.data())));
    }
}

/// Stores what `find_column` left.
void store_column(TRUTH_TABLE_VAL& value, int width, std::string_view text)
{
    value.bit_count = std::int32_t{1} << width; // stays when the allocation fails
    const std::size_t size = words_for_width(width);
    if (value.words.capacity() < size) {
        std::vector<std::uint32_t> longer;
        longer.reserve(size);
        value.words.swap(longer);
    }
    value.words.clear();
    append_words(value.words, text);
    value.words.resize(size);
}

/// The meaningful bits of a word; words that are missing count as zero.
std::uint32_t meaningful_word(const TRUTH_TABLE_VAL& value, std::size_t i)
{
    const std::uint32_t word = i < value.words.size() ? value.words[i] : 0;
    const std::size_t bits = static_cast<std::size_t>(value.bit_count) - i * 32;
    return bits < 32 ? word & ((1U << bits) - 1) : word;
}

} // namespace

std::string TRUTH_TABLE_VAL::get_hex_string() const
{
    std::string text;
    std::size_t digits = digits_for_bits(bit_count); // that are not yet written
    text.reserve(digits);
    const std::size_t whole = std::min(words.size(), static_cast<std::size_t>(bit_count) / 32);
    while (digits > whole * word_digits) {  // of words that are missing or used in part
        std::array<char, word_digits> word; // NOLINT(*-member-init): filled before use
        const std::size_t end = (digits - 1) / word_digits;
        store_digits(word.data(), digits_of(meaningful_word(*this, end)));
        text.append(word.end() - (digits - end * word_digits), word.end());
        digits = end * word_digits;
    }
    while (digits > 0) {
        const std::size_t count = std::min(digits / word_digits, piece_words);
        const std::size_t start = text.size();
        digits -= count * word_digits;
        text.resize(start + count * word_digits);
        write_digits(words.data() + digits / word_digits, count, text.data() + start);
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
