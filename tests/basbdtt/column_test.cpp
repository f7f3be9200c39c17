// Columns: combination, equality, hexadecimal text, and what a failure leaves.
#include "basbdtt.h"

#include "host_recorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <utility>

namespace {

using words = std::vector<std::uint32_t>;
using strings = std::vector<std::string>;

/// A column of a length that goes with no width.
TRUTH_TABLE_VAL random_value(std::mt19937& random, int bit_count)
{
    TRUTH_TABLE_VAL value(1, 0);
    value.words.resize(random() % 24);
    std::generate(value.words.begin(), value.words.end(), std::ref(random));
    value.bit_count = bit_count;
    return value;
}

TEST(column, constant_columns_have_no_bit_beyond_the_column)
{
    for (int width = 1; width <= 12; ++width) {
        const std::size_t size = width < 5 ? 1 : std::size_t{1} << (width - 5);
        const std::uint32_t full = width < 5 ? (1U << (1U << width)) - 1 : ~0U;
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 1).words, words(size, full));
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 0).words, words(size, 0));
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 0).bit_count, 1 << width);
    }
}

TEST(column, columns_of_any_two_lengths_are_combined_and_compared)
{
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        TRUTH_TABLE_VAL own = random_value(random, 2);
        TRUTH_TABLE_VAL other = own; // but for a bit, or for the length
        if (round % 3 != 0 && !own.words.empty()) {
            other.words[random() % own.words.size()] ^= 1U << random() % 32;
        }
        other.words.resize(round % 2 == 0 ? own.words.size() : random() % 24);
        words x = own.words;
        words y = other.words;
        x.resize(std::max(x.size(), y.size()));
        y.resize(x.size());
        ASSERT_EQ(own == other, x == y) << round;
        const auto check = [&](auto assign, auto expected) {
            TRUTH_TABLE_VAL result = own;
            assign(result, other);
            words column(x.size());
            std::transform(x.begin(), x.end(), y.begin(), column.begin(), expected);
            ASSERT_EQ(result.words, column) << round;
            ASSERT_EQ(result.bit_count, 2);
        };
        check([](auto& a, const auto& b) { a ^= b; }, std::bit_xor<>());
        check([](auto& a, const auto& b) { a |= b; }, std::bit_or<>());
        check([](auto& a, const auto& b) { a &= b; }, std::bit_and<>());
        own ^= std::as_const(own);
        ASSERT_TRUE(own == TRUTH_TABLE_VAL(1, 0));
    }
}

TEST(column, set_value_drops_what_lies_beyond_the_width)
{
    std::mt19937 random(2);
    for (int round = 0; round < 400; ++round) {
        const int width = 1 + round % 9;
        BOOL_TRUTH_TABLE table;
        table.value = random_value(random, 5);
        words expected = table.value.words;
        expected.resize(std::max(expected.size(), TRUTH_TABLE_VAL(width, 0).words.size()));
        for (std::size_t i = std::size_t{1} << width; i < 32 * expected.size(); ++i) {
            expected[i / 32] &= ~(1U << i % 32);
        }
        table.set_value(width, round % 2 == 0 ? table.value : TRUTH_TABLE_VAL(table.value));
        ASSERT_EQ(table.value.words, expected) << width;
        ASSERT_EQ(table.value.bit_count, 5);
        ASSERT_EQ(table.get_width(), width);
    }
}

TEST(hexadecimal, text_of_every_bit_count)
{
    std::mt19937 random(20240612);
    constexpr int long_text = 8204; // converted in two pieces, with digits to spare in the first
    for (int bit_count = -1; bit_count <= long_text;
         bit_count = bit_count == 700 ? long_text : bit_count + 1) {
        const TRUTH_TABLE_VAL value = random_value(random, bit_count);
        words padded = value.words;
        padded.resize(1 + long_text / 32);
        std::string expected;
        for (int low = 0; low < bit_count; low += 4) {
            const std::uint32_t mask = (1U << std::min(4, bit_count - low)) - 1;
            const std::uint32_t digit = padded[static_cast<std::size_t>(low) / 32] >> low % 32;
            expected.insert(expected.begin(), "0123456789ABCDEF"[digit & mask]);
        }
        ASSERT_EQ(value.get_hex_string(), expected);
    }
}

TEST(hexadecimal, what_is_written_is_read)
{
    std::mt19937 random(20240613);
    for (int width = 1; width <= 16; ++width) {
        TRUTH_TABLE_VAL written(width, 1);
        for (std::uint32_t& word : written.words) {
            word &= static_cast<std::uint32_t>(random());
        }
        std::string text = written.get_hex_string();
        for (char& digit : text) {
            digit = static_cast<char>(random() % 2 == 0 ? digit : std::tolower(digit));
        }
        TRUTH_TABLE_VAL value(1, 1);
        value.set_from_hex_string(width, std::string(100, '0') + text);
        EXPECT_EQ(value.words, written.words);
        EXPECT_EQ(value.bit_count, 1 << width);
        BOOL_TRUTH_TABLE table;
        table.set_value_from_hex_string(width + 2, "0X" + text); // a column of missing digits
        EXPECT_TRUE(table.value == value);
        EXPECT_EQ(table.value.bit_count, 4 << width);
        EXPECT_EQ(table.get_width(), width + 2);
    }
    for (const int width : {0, 1}) { // all four bits are stored, two at most are shown
        TRUTH_TABLE_VAL value(6, 1);
        value.set_from_hex_string(width, "E");
        EXPECT_EQ(value.words, words{14});
        EXPECT_EQ(value.get_hex_string(), width == 0 ? "0" : "2");
    }
    EXPECT_EQ(host_recorder::take_statuses(), strings{});
}

TEST(hexadecimal, misuse_sends_one_message_and_changes_nothing)
{
    struct {
        int width;
        std::string text, message;
    } const cases[] = {
        {4, "0x", "Unexpected hexadecimal digit 'x'"},
        {9, std::string(64, '1') + "\x19", "Unexpected hexadecimal digit '\x19'"},
        {9, "\xC1" + std::string(127, '1'), "Unexpected hexadecimal digit '\xC1'"},
        {3, "100", "Hexadecimal digit '1' beyond the column of width 3"},
        {6, "Z1" + std::string(16, '0'), "Hexadecimal digit '1' beyond the column of width 6"},
    };
    for (const auto& c : cases) {
        BOOL_TRUTH_TABLE table;
        table.set_identity_for_input(7, 6);
        table.set_value_from_hex_string(c.width, c.text);
        EXPECT_EQ(host_recorder::take_statuses(), strings{c.message});
        EXPECT_EQ(table.width, 7);
        EXPECT_EQ(table.value.get_hex_string(), std::string(16, 'F') + std::string(16, '0'));
    }
    for (const int width : {6, 8}) { // each character in each place, of a pair and of lanes
        const std::size_t digits = std::size_t{1} << (width - 2);
        for (std::size_t i = 0; i < 256 * digits; ++i) {
            std::string text(digits, '0');
            text[i % digits] = static_cast<char>(i / digits);
            TRUTH_TABLE_VAL value(1, 1);
            value.set_from_hex_string(width, text);
            const bool is_digit = std::isxdigit(static_cast<int>(i / digits)) != 0;
            ASSERT_EQ(host_recorder::take_statuses().empty(), is_digit) << i;
            ASSERT_EQ(value.bit_count, is_digit ? 1 << width : 2) << i;
        }
    }
}

} // namespace
