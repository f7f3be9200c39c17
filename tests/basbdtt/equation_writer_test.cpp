// The writers of both equation texts against their definition, and read back.
#include "basbdtt.h"

#include "host_recorder.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TRUTH_TABLE_VAL column(const std::vector<std::uint32_t>& words)
{
    TRUTH_TABLE_VAL value(1, 0);
    value.words = words;
    return value;
}

BOOL_TRUTH_TABLE table_of(int width, const std::vector<std::uint32_t>& words)
{
    BOOL_TRUTH_TABLE table;
    table.set_value(width, column(words));
    return table;
}

/// Either equation by its definition, on cofactor tables; the internal one without its prefix.
std::string literal(const BOOL_TRUTH_TABLE& table, bool external, bool top_level)
{
    const int n = table.get_width();
    const std::string no = external ? "!" : "~";
    const auto name = [external](int i) {
        return external ? std::string{static_cast<char>('A' + i), ' '} : "B" + std::to_string(i);
    };
    const TRUTH_TABLE_VAL zero = column({0});
    if (n == 1) {
        const std::string texts[] = {external ? "0 " : "0", no + name(0), name(0),
                                     top_level && !external ? "1" : ""};
        return texts[table.value.words[0] & 3U];
    }
    if (table.value == zero) {
        return "0";
    }
    if (table.value == TRUTH_TABLE_VAL(n, 1)) {
        return top_level ? "1" : "";
    }
    const BOOL_TRUTH_TABLE f = table.get_false_factor_for_input(n - 1);
    const BOOL_TRUTH_TABLE t = table.get_true_factor_for_input(n - 1);
    std::string s0 = literal(f, external, false);
    const std::string s1 = literal(t, external, false);
    if (f.value == t.value) {
        return s0;
    }
    const TRUTH_TABLE_VAL one(n - 1, 1);
    TRUTH_TABLE_VAL not_t = t.value;
    not_t ^= one;
    const bool f_constant = f.value == zero || f.value == one;
    const bool t_constant = t.value == zero || t.value == one;
    const std::string x = name(n - 1);
    const std::string times = external ? "" : "*";
    std::string text;
    if (!external && !f_constant && f.value == not_t) {
        text = x + "@" + s0;
    } else {
        text = f.value == one   ? no + x
               : f_constant     ? ""
               : t.value == one ? s0
                                : no + x + times + s0;
        text += f.value == zero || t.value == zero ? "" : external ? "+ " : "+";
        text += t.value == zero ? "" : f.value == one ? s1 : t.value == one ? x : x + times + s1;
    }
    return top_level                  ? "(" + text + ")"
           : f_constant && t_constant ? text
                                      : "(" + text + (external ? ") " : ")");
}

/// Both texts by their definition, read back into a table that held something else.
void expect_texts(const BOOL_TRUTH_TABLE& table)
{
    using BTT = BOOL_TRUTH_TABLE;
    for (const bool top_level : {false, true}) {
        ASSERT_EQ(BTT::get_external_equation_recurse(table, top_level),
                  literal(table, true, top_level));
        ASSERT_EQ(BTT::get_internal_equation_recurse(table, top_level),
                  literal(table, false, top_level));
    }
    ASSERT_EQ(table.get_external_equation(), literal(table, true, true));
    ASSERT_EQ(table.get_internal_equation(), "F0=" + literal(table, false, true));
    for (const bool external : {true, false}) {
        BOOL_TRUTH_TABLE read = table_of(1, {2});
        external
            ? read.set_value_from_external_equation(table.width, table.get_external_equation())
            : read.set_value_from_internal_equation(table.width, table.get_internal_equation());
        ASSERT_EQ(read.value.words, table.value.words) << table.get_internal_equation();
        ASSERT_EQ(read.width, table.width);
    }
    ASSERT_TRUE(host_recorder::take_statuses().empty());
}

TEST(EquationWriter, AllTablesOfWidths1To4)
{
    for (int width = 1; width <= 4; ++width) {
        for (std::uint32_t bits = 0; bits < 1U << (1U << width); ++bits) {
            expect_texts(table_of(width, {bits}));
        }
    }
}

/// Columns of every width up to 15, some at random, some with halves that repeat, vanish or are
/// complements of each other.
TEST(EquationWriter, RandomTablesOfWidths5To15)
{
    constexpr unsigned seed = 3;
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        std::vector<std::uint32_t> words = {static_cast<std::uint32_t>(random())};
        int width = 5;
        for (const int widest = 5 + round % 11; width < widest; ++width) {
            const auto kind = random() % 6;
            for (std::size_t i = 0, half = words.size(); i < half; ++i) {
                const std::uint32_t others[] = {words[i], ~words[i], 0, ~0U};
                words.push_back(kind < 4 ? others[kind] : static_cast<std::uint32_t>(random()));
            }
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        expect_texts(table_of(width, words));
    }
}

TEST(EquationWriter, Examples)
{
    const struct {
        int width;
        std::uint32_t bits;
        const char *external, *internal;
    } cases[] = {
        {1, 0x0, "0 ", "F0=0"},
        {1, 0x3, "", "F0=1"},
        {2, 0xF, "1", "F0=1"},
        {2, 0x6, "(!B A + B !A )", "F0=(B1@B0)"},
        {3, 0x88, "(B A ) ", "F0=(B1*B0)"},
        {3, 0xE8, "(!C (B A ) + C (A + B ) )", "F0=(~B2*(B1*B0)+B2*(B0+B1))"},
        {3, 0x96, "(!C (!B A + B !A ) + C (!B !A + B A ) )", "F0=(B2@(B1@B0))"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(table_of(each.width, {each.bits}).get_external_equation(), each.external);
        EXPECT_EQ(table_of(each.width, {each.bits}).get_internal_equation(), each.internal);
    }
    BOOL_TRUTH_TABLE table;
    EXPECT_EQ(table.get_external_equation() + table.get_internal_equation(), "0F0=0");
    table.set_identity_for_input(27, 26);
    EXPECT_EQ(table.get_external_equation() + table.get_internal_equation(), "([ )F0=(B26)");
}

/// Fields set by hand: missing words are zero; bits beyond the column are in no cofactor.
TEST(EquationWriter, ColumnsOfOtherLengths)
{
    BOOL_TRUTH_TABLE table = table_of(7, {~0U, ~0U, 0, 0});
    table.value.words.resize(2);
    EXPECT_EQ(table.get_internal_equation(), "F0=(~B6)");
    table = table_of(2, {6});
    table.value.words = {0xF6, 1};
    EXPECT_EQ(table.get_external_equation(), "(!B A + B !A )");
    table.value.words = {0, 1};
    EXPECT_EQ(table.get_external_equation(), "0 ");
    table.value.words = {0xFF};
    EXPECT_EQ(table.get_internal_equation(), "F0=");
}

} // namespace
