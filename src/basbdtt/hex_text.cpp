// The hexadecimal text of a column, in both directions.
#include "column_words.h"
#include "function_clones.h"
#include "ut_text.h"

#include <algorithm>
#include <string_view>

namespace {

using namespace basbdtt;

constexpr std::size_t word_digits = 8;
constexpr std::size_t pair_digits = 16;

/// @brief What is converted at a time.
///
/// Text and column run in opposite directions. The bytes of a chunk are reversed in a buffer; the
/// loops between digits and bytes then run forwards, many digits at a step, and never meet an end.
constexpr std::size_t chunk_pairs = 128;
constexpr std::size_t chunk_digits = chunk_pairs * pair_digits;
using chunk_bytes = std::array<std::uint8_t, chunk_digits / 2>; ///< in the order of the text
using chunk_words = std::array<std::uint32_t, 2 * chunk_pairs>; ///< in the order of the column
using chunk_text = std::array<char, chunk_digits>;

/// Digits of a column of `bit_count` bits.
constexpr std::size_t digits_for_bits(std::int32_t bit_count)
{
    return bit_count <= 0 ? 0 : (static_cast<std::size_t>(bit_count) + 3) / 4;
}

/// The digits of `count` bytes, the high half of a byte first.
BASBDTT_CLONES void write_digits(const std::uint8_t* bytes, std::size_t count, char* text)
{
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned halves = bytes[i] >> 4U | (bytes[i] & 15U) << 8U;
        const unsigned letters = (halves + 0x0606U) >> 4U & 0x0101U;
        const auto digits =
            static_cast<std::uint16_t>(halves + 0x3030U + letters * ('A' - '9' - 1));
        std::memcpy(text + 2 * i, &digits, sizeof digits);
    }
}

/// @brief The bytes that `2 * count` digits stand for.
/// @return 0 exactly if all characters are digits
BASBDTT_CLONES unsigned read_digits(const char* text, std::size_t count, std::uint8_t* bytes)
{
    chunk_text values; // NOLINT(*-member-init): filled before use
    std::uint8_t misuse = 0;
    for (std::size_t i = 0; i < 2 * count; ++i) {
        const auto c = static_cast<std::uint8_t>(text[i]);
        const auto digit = static_cast<std::uint8_t>(c - '0');
        const auto letter = static_cast<std::uint8_t>((c | 0x20U) - 'a');
        values[i] = static_cast<char>(digit < 10 ? digit : letter + 10);
        misuse = static_cast<std::uint8_t>(misuse | (digit >= 10 && letter >= 6 ? 1 : 0));
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::uint16_t halves = 0;
        std::memcpy(&halves, &values[2 * i], sizeof halves);
        bytes[i] = static_cast<std::uint8_t>(halves << 4U | halves >> 8U);
    }
    return misuse;
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

/// @brief Appends the words that the digits of `text` stand for, its last digit first.
/// @return whether all characters are digits
bool append_words(std::vector<std::uint32_t>& words, std::string_view text)
{
    chunk_text digits;  // NOLINT(*-member-init): filled before use
    chunk_bytes bytes;  // NOLINT(*-member-init): filled before use
    chunk_words result; // NOLINT(*-member-init): filled before use
    while (!text.empty()) {
        const std::size_t taken = std::min(text.size(), chunk_digits);
        const std::size_t count = (taken + pair_digits - 1) / pair_digits;
        const char* source = text.data() + text.size() - taken;
        if (taken != count * pair_digits) {
            std::fill_n(digits.begin(), count * pair_digits - taken, '0');
            std::copy_n(source, taken, digits.begin() + count * pair_digits - taken);
            source = digits.data();
        }
        if (read_digits(source, count * sizeof(std::uint64_t), bytes.data()) != 0) {
            return false;
        }
        for (std::size_t i = 0; i < count; ++i) {
            std::uint64_t pair = 0;
            std::memcpy(&pair, &bytes[(count - 1 - i) * sizeof pair], sizeof pair);
            store_pair(&result[2 * i], __builtin_bswap64(pair));
        }
        words.insert(words.end(), result.data(),
                     result.data() + (taken + word_digits - 1) / word_digits);
        text.remove_suffix(taken);
    }
    return true;
}

/// @return whether `text` was stored; otherwise nothing has changed and the user was told
bool read_hex(TRUTH_TABLE_VAL& value, int width, std::string_view text)
{
    const std::int32_t old_bit_count = value.bit_count;
    value.bit_count = std::int32_t{1} << width;
    std::vector<std::uint32_t> words;
    words.reserve(words_for_width(width));
    const std::size_t digits = digits_for_bits(value.bit_count);
    const std::size_t beyond = text.size() - std::min(text.size(), digits);
    if (text.substr(0, beyond).find_first_not_of('0') != std::string_view::npos ||
        !append_words(words, text.substr(beyond))) {
        value.bit_count = old_bit_count;
        report_misuse(text, digits, width);
        return false;
    }
    words.resize(words_for_width(width));
    value.words.swap(words);
    return true;
}

/// Pair `i` of a column's meaningful bits; words that are missing count as zero.
std::uint64_t meaningful_pair(const TRUTH_TABLE_VAL& value, std::size_t i)
{
    constexpr std::size_t pair_bits = 64;
    const std::vector<std::uint32_t>& words = value.words;
    std::uint64_t pair = 0;
    if (2 * i + 1 < words.size()) {
        pair = load_pair(&words[2 * i]);
    } else if (2 * i < words.size()) {
        pair = words[2 * i];
    }
    const std::size_t bits = static_cast<std::size_t>(value.bit_count) - i * pair_bits;
    return bits < pair_bits ? pair & ((std::uint64_t{1} << bits) - 1) : pair;
}

} // namespace

std::string TRUTH_TABLE_VAL::get_hex_string() const
{
    const std::size_t digits = digits_for_bits(bit_count);
    std::string text;
    text.reserve(digits);
    chunk_bytes bytes; // NOLINT(*-member-init): filled before use
    chunk_text chunk;  // NOLINT(*-member-init): filled before use
    std::size_t end = (digits + pair_digits - 1) / pair_digits;
    std::size_t unused = end * pair_digits - digits; // digits that the last pair has too many
    while (end > 0) {
        const std::size_t count = std::min(end, chunk_pairs);
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t pair = __builtin_bswap64(meaningful_pair(*this, end - 1 - i));
            std::memcpy(&bytes[i * sizeof pair], &pair, sizeof pair);
        }
        write_digits(bytes.data(), count * sizeof(std::uint64_t), chunk.data());
        text.append(chunk.data() + unused, count * pair_digits - unused);
        unused = 0;
        end -= count;
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
