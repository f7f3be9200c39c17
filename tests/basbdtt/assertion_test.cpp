// The preconditions: text and signature are what the standard assertion would print.
#include "basbdtt.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <functional>

namespace {

constexpr const char* column = "TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)";
constexpr const char* column_text =
    "void TRUTH_TABLE_VAL::set_from_hex_string(int, const std::string&)";
constexpr const char* value = "void BOOL_TRUTH_TABLE::set_value(int, const TRUTH_TABLE_VAL&)";
constexpr const char* table_text =
    "void BOOL_TRUTH_TABLE::set_value_from_hex_string(int, const std::string&)";
constexpr const char* is_identity = "bool BOOL_TRUTH_TABLE::is_identity_for_input(int) const";
constexpr const char* set_identity = "void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)";
constexpr const char* inversion = "void BOOL_TRUTH_TABLE::invert_input(int)";
constexpr const char* exchange = "void BOOL_TRUTH_TABLE::rotate_inputs(int, int)";
constexpr const char* permutation = "void BOOL_TRUTH_TABLE::rotate_inputs(int*)";
constexpr const char* true_factor =
    "BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_true_factor_for_input(int) const";
constexpr const char* false_factor =
    "BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_false_factor_for_input(int) const";
constexpr const char* in_range = "input>=0 && input<get_width()";
constexpr const char* both_in_range = "i0>=0 && i0<get_width() && i1>=0 && i1<get_width()";
constexpr const char* factor = "input>=0 && input<get_width() && get_width()>0";
constexpr const char* permuting = "perm[i]>=0 && perm[i]<get_width() && !(x & (1<<perm[i]))";

struct misuse {
    const char* signature;
    const char* text;
    std::function<void(BOOL_TRUTH_TABLE&)> call; ///< on a table of three inputs
};

/// The regular expression that matches `text` and nothing else.
std::string literally(const std::string& text)
{
    std::string pattern;
    for (const char c : text) {
        pattern += std::isalnum(c) != 0 ? std::string{c} : std::string{'[', c, ']'};
    }
    return pattern;
}

void rotate(BOOL_TRUTH_TABLE& table, int first, int second, int third)
{
    std::array<int, 3> perm{first, second, third};
    table.rotate_inputs(perm.data());
}

BOOL_TRUTH_TABLE& wide(BOOL_TRUTH_TABLE& table, signed char width)
{
    table.width = width;
    return table;
}

// NOLINTBEGIN(readability-identifier-length)
const misuse misuses[] = {
    {column, "width>=1", [](auto&) { TRUTH_TABLE_VAL(0, 1); }},
    {column, "width<=30", [](auto&) { TRUTH_TABLE_VAL(31, 0); }},
    {column, "width>=1", [](auto& t) { rotate(wide(t, 0), 0, 1, 2); }},
    {column, "width<=30", [](auto& t) { wide(t, 127).get_true_factor_for_input(0); }},
    {column_text, "width>=0", [](auto& t) { t.value.set_from_hex_string(-1, ""); }},
    {column_text, "width<=30", [](auto& t) { t.value.set_from_hex_string(31, ""); }},
    {value, "width>0", [](auto& t) { t.set_value(0, t.value); }},
    {value, "width<=30", [](auto& t) { t.set_value(31, t.value); }},
    {table_text, "width>0", [](auto& t) { t.set_value_from_hex_string(0, "1"); }},
    {table_text, "width<=30", [](auto& t) { t.set_value_from_hex_string(31, "1"); }},
    {is_identity, "input<get_width()", [](auto& t) { t.is_identity_for_input(3); }},
    {is_identity, "input>=0", [](auto& t) { t.is_identity_for_input(-1); }},
    {set_identity, "width>0", [](auto& t) { t.set_identity_for_input(0, 0); }},
    {set_identity, "width<=30", [](auto& t) { t.set_identity_for_input(31, 0); }},
    {set_identity, "input<width", [](auto& t) { t.set_identity_for_input(2, 2); }},
    {set_identity, "input>=0", [](auto& t) { t.set_identity_for_input(2, -1); }},
    {inversion, in_range, [](auto& t) { t.invert_input(3); }},
    {inversion, in_range, [](auto& t) { t.invert_input(-1); }},
    {exchange, both_in_range, [](auto& t) { t.rotate_inputs(3, 3); }},
    {exchange, both_in_range, [](auto& t) { t.rotate_inputs(0, -1); }},
    {permutation, permuting, [](auto& t) { rotate(t, 0, 0, 1); }},
    {permutation, permuting, [](auto& t) { rotate(t, 0, 3, 1); }},
    {permutation, permuting, [](auto& t) { rotate(t, -1, 0, 1); }},
    {true_factor, factor, [](auto& t) { t.get_true_factor_for_input(3); }},
    {false_factor, factor, [](auto& t) { t.get_false_factor_for_input(-1); }},
};
// NOLINTEND(readability-identifier-length)

TEST(AssertionDeathTest, TextAndSignature)
{
    for (const misuse& each : misuses) {
        BOOL_TRUTH_TABLE table;
        table.set_identity_for_input(3, 0);
        const std::string line =
            std::string(": ") + each.signature + ": Assertion `" + each.text + "' failed.";
        EXPECT_EXIT(each.call(table), testing::KilledBySignal(SIGABRT), literally(line));
    }
}

} // namespace
