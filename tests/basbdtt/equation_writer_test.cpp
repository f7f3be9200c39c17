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

/// The external equation by its definition, on cofactor tables.
std::string literal_external(const BOOL_TRUTH_TABLE& table, bool top_level)
{
    const int n = table.get_width();
    if (n == 1) {
        const char* const texts[] = {"0 ", "!A ", "A ", ""};
        return texts[table.value.words[0] & 3U];
    }
    if (table.value == column({0})) {
        return "0";
    }
    if (table.value == TRUTH_TABLE_VAL(n, 1)) {
        return top_level ? "1" : "";
    }
    const BOOL_TRUTH_TABLE f = table.get_false_factor_for_input(n - 1);
    const BOOL_TRUTH_TABLE t = table.get_true_factor_for_input(n - 1);
    if (f.value == t.value) {
        return literal_external(f, false);
    }
    const TRUTH_TABLE_VAL zero = column({0});
    const TRUTH_TABLE_VAL one(n - 1, 1);
    const std::string x = {static_cast<char>('A' + n - 1), ' '};
    std::string text;
    if (!(f.value == zero)) {
        text += t.value == one ? "" : "!" + x;
        text += f.value == one ? "" : literal_external(f, false);
    }
    if (!(t.value == zero)) {
        text += f.value == zero ? "" : "+ ";
        text += f.value == one ? "" : x;
        text += t.value == one ? "" : literal_external(t, false);
    }
    const bool constants =
        (f.value == zero || f.value == one) && (t.value == zero || t.value == one);
    return top_level ? "(" + text + ")" : constants ? text : "(" + text + ") ";
}

/// The internal equation by its definition, without the prefix.
std::string literal_internal(const BOOL_TRUTH_TABLE& table, bool top_level)
{
    const int n = table.get_width();
    if (n == 1) {
        const char* const texts[] = {"0", "~B0", "B0", top_level ? "1" : ""};
        return texts[table.value.words[0] & 3U];
    }
    if (table.value == column({0})) {
        return "0";
    }
    const TRUTH_TABLE_VAL zero = column({0});
    if (table.value == TRUTH_TABLE_VAL(n, 1)) {
        return top_level ? "1" : "";
    }
    const BOOL_TRUTH_TABLE f = table.get_false_factor_for_input(n - 1);
    const BOOL_TRUTH_TABLE t = table.get_true_factor_for_input(n - 1);
    if (f.value == t.value) {
        return literal_internal(f, false);
    }
    const TRUTH_TABLE_VAL one(n - 1, 1);
    TRUTH_TABLE_VAL not_t = t.value;
    not_t ^= one;
    const std::string x = "B" + std::to_string(n - 1);
    const std::string s0 = literal_internal(f, false);
    const std::string s1 = literal_internal(t, false);
    if (f.value == not_t && !(f.value == zero) && !(f.value == one)) {
        return "(" + x + "@" + s0 + ")";
    }
    const bool f_neither = !(f.value == zero || f.value == one);
    const bool t_neither = !(t.value == zero || t.value == one);
    std::string text = f.value == one ? "~" + x : "";
    if (f_neither) {
        text = t.value == one ? s0 : "~" + x + "*" + s0;
    }
    if (!(t.value == zero)) {
        text += f.value == zero ? "" : "+";
        text += f.value == one ? s1 : t.value == one ? x : x + "*" + s1;
    }
    return top_level || f_neither || t_neither ? "(" + text + ")" : text;
}

void expect_texts(const BOOL_TRUTH_TABLE& table)
{
    const std::string external = table.get_external_equation();
    const std::string internal = table.get_internal_equation();
    ASSERT_EQ(external, literal_external(table, true));
    ASSERT_EQ(internal, "F0=" + literal_internal(table, true));
    for (const bool top_level : {false, true}) {
        ASSERT_EQ(BOOL_TRUTH_TABLE::get_external_equation_recurse(table, top_level),
                  literal_external(table, top_level));
        ASSERT_EQ(BOOL_TRUTH_TABLE::get_internal_equation_recurse(table, top_level),
                  literal_internal(table, top_level));
    }
    if (static_cast<std::size_t>(table.value.bit_count) > 32 * table.value.words.size()) {
        return; // set by hand: there is no such text to read
    }
    BOOL_TRUTH_TABLE read = table_of(1, {2});
    read.set_value_from_external_equation(table.width, external);
    ASSERT_TRUE(read.value == table.value) << external;
    read.set_value_from_internal_equation(table.width, internal);
    ASSERT_TRUE(read.value == table.value) << internal;
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
} // namespace
