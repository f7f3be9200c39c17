// Columns: combination, equality, hexadecimal text, and what a failure leaves.
#include "basbdtt.h"

#include "host_recorder.h"

#include <gtest/gtest.h>

#include <limits>
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
        const TRUTH_TABLE_VAL one(width, 1);
        const std::size_t digits = width == 1 ? 1 : std::size_t{1} << (width - 2);
        EXPECT_EQ(one.get_hex_string(), width == 1 ? "3" : std::string(digits, 'F'));
        EXPECT_EQ(one.words.back(), width < 5 ? (1U << (1 << width)) - 1 : ~0U);
        EXPECT_EQ(one.words.size(), (digits + 7) / 8);
        EXPECT_EQ(TRUTH_TABLE_VAL(width, 0).get_hex_string(), std::string(digits, '0'));
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
        TRUTH_TABLE_VAL value = value_of(c.own, 2);
        value ^= value_of(c.other, 64);
        EXPECT_EQ(value.words, c.exclusive);
        EXPECT_EQ(value.bit_count, 2);
        value = value_of(c.own, 2);
        value |= value_of(c.other, 64);
        EXPECT_EQ(value.words, c.either);
        value = value_of(c.own, 2);
        value &= value_of(c.other, 64);
        EXPECT_EQ(value.words, c.both);
        value &= value;
        EXPECT_EQ(value.words, c.both);
        value ^= value;
        EXPECT_TRUE(value == value_of({}, 0));
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
    EXPECT_EQ(table.value.bit_count, 64);
    EXPECT_EQ(table.get_width(), 3);
    table.set_value(7, table.value);
    EXPECT_EQ(table.value.words, (words{0xA5, 0, 0, 0}));
    EXPECT_EQ(table.value.bit_count, 64);
}

TEST(Hexadecimal, TextOfEveryBitCount)
{
    std::mt19937 random(20240612);
    for (int bit_count = -1; bit_count <= 700; ++bit_count) {
        words content(static_cast<std::size_t>(random() % 24));
        std::generate(content.begin(), content.end(), std::ref(random));
        std::string expected;
        for (int low = 0; low < bit_count; low += 4) {
            unsigned digit = 0;
            for (int i = low; i < std::min(low + 4, bit_count); ++i) {
                const auto word = static_cast<std::size_t>(i / 32);
                digit |= word < content.size() ? (content[word] >> (i % 32) & 1U) << (i - low) : 0;
            }
            expected.insert(expected.begin(), "0123456789ABCDEF"[digit]);
        }
        ASSERT_EQ(value_of(content, bit_count).get_hex_string(), expected);
    }
}

TEST(Hexadecimal, WhatIsWrittenIsRead)
{
    std::mt19937 random(20240613);
    for (int width = 0; width <= 16; ++width) {
        std::string text(width < 2 ? 1 : std::size_t{1} << (width - 2), '0');
        for (char& c : text) {
            c = "0123456789ABCDEF"[random() % (width == 0 ? 2 : width == 1 ? 4 : 16)];
        }
        for (const std::string& shown : {text, std::string(100, '0') + text}) {
            TRUTH_TABLE_VAL value(1, 1);
            value.set_from_hex_string(width, shown);
            EXPECT_EQ(value.get_hex_string(), text);
            EXPECT_EQ(value.bit_count, 1 << width);
            EXPECT_EQ(value.words.size(), (text.size() + 7) / 8);
        }
        if (width > 0) {
            BOOL_TRUTH_TABLE table;
            std::transform(text.begin(), text.end(), text.begin(), ::tolower);
            table.set_value_from_hex_string(width, "0X" + text.substr(text.size() / 3));
            std::fill_n(text.begin(), text.size() / 3, '0');
            std::transform(text.begin(), text.end(), text.begin(), ::toupper);
            EXPECT_EQ(table.value.get_hex_string(), text);
            EXPECT_EQ(table.get_width(), width);
        }
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
        {4, "00G", "Unexpected hexadecimal digit 'G'"},
        {4, "-/:@g`", "Unexpected hexadecimal digit '`'"},
        {9, std::string(64, '1') + "\x19", "Unexpected hexadecimal digit '\\x19'"},
        {9, "\xC1" + std::string(127, '1'), "Unexpected hexadecimal digit '\\xC1'"},
        {9, std::string(1, '\0') + "1", "Unexpected hexadecimal digit '\\x00'"},
        {3, "100", "Hexadecimal digit '1' beyond the 2 digits of width 3"},
        {6, "Z1" + std::string(16, '0'), "Hexadecimal digit '1' beyond the 16 digits of width 6"},
    };
    for (const auto& c : cases) {
        BOOL_TRUTH_TABLE table;
        table.set_identity_for_input(7, 6);
        const BOOL_TRUTH_TABLE before = table;
        table.set_value_from_hex_string(c.width, c.text);
        EXPECT_EQ(host_recorder::take_statuses(), strings{c.message});
        EXPECT_EQ(table.width, before.width);
        EXPECT_EQ(table.value.words, before.value.words);
        EXPECT_EQ(table.value.bit_count, before.value.bit_count);
    }
    for (int c = 0; c < 256; ++c) { // every character, at the place of every lane
        for (std::size_t place = 0; place < 64; ++place) {
            std::string text(64, '0');
            text[place] = static_cast<char>(c);
            TRUTH_TABLE_VAL value(1, 1);
            value.set_from_hex_string(8, text);
            ASSERT_EQ(host_recorder::take_statuses().empty(), std::isxdigit(c) != 0) << c;
            ASSERT_EQ(value.bit_count, std::isxdigit(c) != 0 ? 256 : 2) << c;
        }
    }
}

} // namespace
