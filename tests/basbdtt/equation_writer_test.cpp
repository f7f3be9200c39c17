// The writers of both equation texts against their definition, and read back.
#include "basbdtt.h"

#include <gtest/gtest.h>

#include <bitset>
#include <functional>
#include <random>

namespace {

/// Entry x of the column is character x.
BOOL_TRUTH_TABLE table_of(const std::string& bits)
{
    BOOL_TRUTH_TABLE table;
    table.set_value(__builtin_ctzll(bits.size()), TRUTH_TABLE_VAL(1, 0));
    table.value.bit_count = static_cast<std::int32_t>(bits.size());
    for (std::size_t x = 0; x < bits.size(); ++x) {
        table.value.words[x / 32] |= (bits[x] == '1' ? 1U : 0U) << x % 32;
    }
    return table;
}

bool all(const std::string& bits, char value)
{
    return bits.find_first_not_of(value) > bits.size();
}

/// Either equation of a column by its definition; the internal one without its prefix.
std::string literal(const std::string& bits, bool external, bool top_level)
{
    const int n = __builtin_ctzll(bits.size()) - 1;
    const std::string x =
        external ? std::string{static_cast<char>('A' + n), ' '} : "B" + std::to_string(n);
    const std::string not_x = (external ? "!" : "~") + x;
    if (n == 0) {
        const std::string zero = external ? "0 " : "0";
        const std::string one = top_level && !external ? "1" : "";
        return bits == "00" ? zero : bits == "10" ? not_x : bits == "01" ? x : one;
    }
    if (all(bits, '0') || all(bits, '1')) {
        return all(bits, '0') ? "0" : top_level ? "1" : "";
    }
    const std::string f = bits.substr(0, bits.size() / 2);
    const std::string t = bits.substr(bits.size() / 2);
    std::string s0 = literal(f, external, false);
    const std::string s1 = literal(t, external, false);
    if (f == t) {
        return s0;
    }
    const bool f_constant = all(f, '0') || all(f, '1');
    const bool t_constant = all(t, '0') || all(t, '1');
    const std::string times = external ? "" : "*";
    std::string text;
    if (!external && !f_constant &&
        std::equal(f.begin(), f.end(), t.begin(), std::not_equal_to<>())) {
        text = x + "@" + s0;
    } else {
        text = all(f, '1') ? not_x : f_constant ? "" : all(t, '1') ? s0 : not_x + times + s0;
        text += all(f, '0') || all(t, '0') ? "" : external ? "+ " : "+";
        text += all(t, '0') ? "" : all(f, '1') ? s1 : all(t, '1') ? x : x + times + s1;
    }
    return top_level                  ? "(" + text + ")"
           : f_constant && t_constant ? text
                                      : "(" + text + (external ? ") " : ")");
}

/// Both texts by their definition, and what they are read back to.
void expect_texts(const std::string& bits)
{
    using table_type = BOOL_TRUTH_TABLE;
    const table_type table = table_of(bits);
    for (const bool top_level : {false, true}) {
        ASSERT_EQ(table_type::get_external_equation_recurse(table, top_level),
                  literal(bits, true, top_level));
        ASSERT_EQ(table_type::get_internal_equation_recurse(table, top_level),
                  literal(bits, false, top_level));
    }
    table_type read[2];
    read[0].set_value_from_external_equation(table.width, table.get_external_equation());
    read[1].set_value_from_internal_equation(table.width, table.get_internal_equation());
    for (const table_type& each : read) {
        ASSERT_EQ(each.value.words, table.value.words) << table.get_internal_equation();
        ASSERT_EQ(each.width, table.width);
    }
}

TEST(equation_writer, all_tables_of_widths_1_to_4)
{
    for (std::size_t entries = 2; entries <= 16; entries *= 2) {
        for (std::uint32_t column = 0; column < 1U << entries; ++column) {
            expect_texts(std::bitset<16>(column).to_string().substr(16 - entries));
        }
    }
}

/// Some halves at random, some that repeat the other, vanish or are its complement.
TEST(equation_writer, random_tables_of_widths_1_to_15)
{
    constexpr unsigned seed = 3;
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        std::string bits = round % 2 == 0 ? "01" : "10";
        while (bits.size() < std::size_t{2} << round % 15) {
            const auto kind = random() % 6;
            for (const char bit : std::string(bits)) {
                const char at_random = random() % 2 == 0 ? '0' : '1';
                const char complement = bit == '0' ? '1' : '0';
                const char others[] = {bit, complement, '0', '1', at_random, at_random};
                bits += others[kind];
            }
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        expect_texts(bits);
    }
}

TEST(equation_writer, no_inputs_and_the_highest)
{
    BOOL_TRUTH_TABLE table;
    EXPECT_EQ(table.get_external_equation() + table.get_internal_equation(), "0F0=0");
    table.set_identity_for_input(27, 26);
    EXPECT_EQ(table.get_external_equation() + table.get_internal_equation(), "([ )F0=(B26)");
}

/// Fields set by hand: missing words are zero; bits beyond the column are in no cofactor.
TEST(equation_writer, columns_of_other_lengths)
{
    BOOL_TRUTH_TABLE table = table_of(std::string(64, '1') + std::string(64, '0'));
    table.value.words.resize(2);
    EXPECT_EQ(table.get_internal_equation(), "F0=(~B6)");
    table = table_of("0110");
    table.value.words = {0xF6, 1};
    EXPECT_EQ(table.get_external_equation(), "(!B A + B !A )");
    table.value.words = {0, 1};
    EXPECT_EQ(table.get_external_equation(), "0 ");
    table.value.words = {0xFF};
    EXPECT_EQ(table.get_internal_equation(), "F0=");
}

} // namespace
