// Columns: combination, equality, hexadecimal text, and what a failure leaves.
#include "basbdtt.h"

#include "host_recorder.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using words = std::vector<std::uint32_t>;
using strings = std::vector<std::string>;

TRUTH_TABLE_VAL value_of(const words& content, int bit_count)
{
    TRUTH_TABLE_VAL value(1, 0);
    value.words = content;
    value.bit_count = bit_count;
    return value;
}

TEST(Value, ConstantColumnsHaveNoBitBeyondTheColumn)
{
    for (int width = 1; width <= 12; ++width) {
        const std::size_t size = width < 5 ? 1 : std::size_t{1} << (width - 5);
        const std::uint32_t full = width < 5 ? (1U << (1U << width)) - 1 : ~0U;
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 1).words, words(size, full));
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 0).words, words(size, 0));
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 0).bit_count, 1 << width);
    }
}

TEST(Value, OperatorsGrowToTheOtherAndKeepTheBitCount)
{
    struct {
        words own, other, exclusive, either, both;
    } const cases[] = {
        {{12}, {10, 5}, {6, 5}, {14, 5}, {8, 0}},
        {{12, 7}, {10}, {6, 7}, {14, 7}, {8, 0}},
        {{}, {3}, {3}, {3}, {0}},
        {{1, 2, 3, 4, 5}, {5, 5, 5, 5, 5}, {4, 7, 6, 1, 0}, {5, 7, 7, 5, 5}, {1, 0, 1, 4, 5}},
    };
    for (const auto& c : cases) {
        TRUTH_TABLE_VAL exclusive = value_of(c.own, 2);
        TRUTH_TABLE_VAL either = exclusive;
        TRUTH_TABLE_VAL both = exclusive;
        exclusive ^= value_of(c.other, 64);
        either |= value_of(c.other, 64);
        both &= value_of(c.other, 64);
        both &= both;
        EXPECT_EQ(exclusive.words, c.exclusive);
        EXPECT_EQ(either.words, c.either);
        EXPECT_EQ(both.words, c.both);
        exclusive ^= exclusive;
        EXPECT_TRUE(exclusive == value_of({}, 0));
        for (const auto& each : {exclusive, either, both}) {
            EXPECT_EQ(each.bit_count, 2);
        }
    }
}

TEST(Value, EqualityTakesMissingWordsAsZero)
{
    EXPECT_TRUE(value_of({3}, 8) == value_of({3, 0, 0}, 32));
    EXPECT_TRUE(value_of({3, 0, 0}, 32) == value_of({3}, 8));
    EXPECT_FALSE(value_of({3}, 8) == value_of({3, 0, 1}, 8));
    EXPECT_FALSE(value_of({3, 1}, 8) == value_of({3}, 8));
    EXPECT_FALSE(value_of({3, 1}, 8) == value_of({3, 2}, 8));
}

TEST(Value, SetValueMasksGrowsAndKeepsTheBitCount)
{
    BOOL_TRUTH_TABLE table;
    table.set_value(3, value_of({0xFFA5, 9}, 64));
    EXPECT_EQ(table.value.words, (words{0xA5, 0}));
    EXPECT_EQ(table.get_width(), 3);
    table.set_value(7, table.value);
    EXPECT_EQ(table.value.words, (words{0xA5, 0, 0, 0}));
    EXPECT_EQ(table.value.bit_count, 64);
}

TEST(Hexadecimal, TextOfEveryBitCount)
{
    std::mt19937 random(20240612);
    for (int bit_count = -1; bit_count <= 700; ++bit_count) {
        const auto length = static_cast<std::ptrdiff_t>(random() % 24);
        words padded(24);
        std::generate_n(padded.begin(), length, std::ref(random));
        std::string expected;
        for (int low = 0; low < bit_count; low += 4) {
            const std::uint32_t mask = (1U << std::min(4, bit_count - low)) - 1;
            const std::uint32_t digit = padded[static_cast<std::size_t>(low) / 32] >> low % 32;
            expected.insert(expected.begin(), "0123456789ABCDEF"[digit & mask]);
        }
        const words content(padded.begin(), padded.begin() + length);
        ASSERT_EQ(value_of(content, bit_count).get_hex_string(), expected);
    }
}

TEST(Hexadecimal, WhatIsWrittenIsRead)
{
    std::mt19937 random(20240613);
    for (int width = 0; width <= 16; ++width) {
        const std::size_t digits = width < 2 ? 1 : std::size_t{1} << (width - 2);
        std::string text;
        while (text.size() < digits) {
            text += "0123aA4bB5cC6dD7eE8fF9"[random() % (width == 0 ? 2 : width == 1 ? 4 : 22)];
        }
        std::string shown = text;
        std::transform(text.begin(), text.end(), shown.begin(), ::toupper);
        TRUTH_TABLE_VAL value(1, 1);
        value.set_from_hex_string(width, std::string(100, '0') + text);
        EXPECT_EQ(value.get_hex_string(), shown);
        EXPECT_EQ(value.bit_count, 1 << width);
        EXPECT_EQ(value.words.size(), (digits + 7) / 8);
        BOOL_TRUTH_TABLE table;
        table.set_value_from_hex_string(width + 2, "0X" + text); // a column of missing digits
        EXPECT_TRUE(table.value == value);
        EXPECT_EQ(table.value.bit_count, 4 << width);
        EXPECT_EQ(table.get_width(), width + 2);
    }
    TRUTH_TABLE_VAL value(6, 1);
    value.set_from_hex_string(1, "E"); // all four bits are stored, two are shown
    EXPECT_EQ(value.words, words{14});
    EXPECT_EQ(value.get_hex_string(), "2");
    EXPECT_EQ(host_recorder::take_statuses(), strings{});
}

TEST(Hexadecimal, MisuseSendsOneMessageAndChangesNothing)
{
    struct {
        int width;
        std::string text, message;
    } const cases[] = {
        {4, "0x", "Unexpected hexadecimal digit 'x'"},
        {4, "-/:@g`", "Unexpected hexadecimal digit '`'"},
        {9, std::string(64, '1') + "\x19", "Unexpected hexadecimal digit '\\x19'"},
        {9, "\xC1" + std::string(127, '1'), "Unexpected hexadecimal digit '\\xC1'"},
        {9, std::string(1, '\0') + "1", "Unexpected hexadecimal digit '\\x00'"},
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
    for (std::size_t i = 0; i < std::size_t{256} * 64;
         ++i) { // every character, at the place of every lane
        std::string text(64, '0');
        text[i % 64] = static_cast<char>(i / 64);
        TRUTH_TABLE_VAL value(1, 1);
        value.set_from_hex_string(8, text);
        const bool is_digit = std::isxdigit(static_cast<int>(i / 64)) != 0;
        ASSERT_EQ(host_recorder::take_statuses().empty(), is_digit) << i;
        ASSERT_EQ(value.bit_count, is_digit ? 256 : 2) << i;
    }
}

} // namespace
