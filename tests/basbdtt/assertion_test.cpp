// The preconditions: text and signature are what the standard assertion would print.
#include "basbdtt.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string_view>

namespace {

constexpr const char* exchange_text = "i0>=0 && i0<get_width() && i1>=0 && i1<get_width()";
constexpr const char* factor_text = "input>=0 && input<get_width() && get_width()>0";
constexpr const char* permutation_text = "perm[i]>=0 && perm[i]<get_width() && !(x & (1<<perm[i]))";

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
        pattern +=
            std::string_view("[](){}*+?.|^$").find(c) < 13 ? std::string{'\\', c} : std::string{c};
    }
    return pattern;
}

void rotate(BOOL_TRUTH_TABLE& table, std::vector<int> perm) { table.rotate_inputs(perm.data()); }

// NOLINTBEGIN(readability-identifier-length)
const misuse misuses[] = {
    {"TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)", "width>=1",
     [](auto&) { TRUTH_TABLE_VAL(0, 1); }},
    {"TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)", "width<=30",
     [](auto&) { TRUTH_TABLE_VAL(31, 0); }},
    {"TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)", "width>=1",
     [](auto&) { rotate(*std::make_unique<BOOL_TRUTH_TABLE>(), {0}); }},
    {"void TRUTH_TABLE_VAL::set_from_hex_string(int, const std::string&)", "width>=0",
     [](auto& t) { t.value.set_from_hex_string(-1, ""); }},
    {"void TRUTH_TABLE_VAL::set_from_hex_string(int, const std::string&)", "width<=30",
     [](auto& t) { t.value.set_from_hex_string(31, ""); }},
    {"void BOOL_TRUTH_TABLE::set_value(int, const TRUTH_TABLE_VAL&)", "width>0",
     [](auto& t) { t.set_value(0, t.value); }},
    {"void BOOL_TRUTH_TABLE::set_value(int, const TRUTH_TABLE_VAL&)", "width<=30",
     [](auto& t) { t.set_value(31, t.value); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_hex_string(int, const std::string&)", "width>0",
     [](auto& t) { t.set_value_from_hex_string(0, "1"); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_hex_string(int, const std::string&)", "width<=30",
     [](auto& t) { t.set_value_from_hex_string(31, "1"); }},
    {"bool BOOL_TRUTH_TABLE::is_identity_for_input(int) const", "input<get_width()",
     [](auto& t) { t.is_identity_for_input(3); }},
    {"bool BOOL_TRUTH_TABLE::is_identity_for_input(int) const", "input>=0",
     [](auto& t) { t.is_identity_for_input(-1); }},
    {"TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)", "width<=30",
     [](auto& t) {
         t.width = 31;
         t.is_identity_for_input(30);
     }},
    {"TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)", "width<=30",
     [](auto& t) {
         t.width = 127;
         t.get_true_factor_for_input(0);
     }},
    {"void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)", "width>0",
     [](auto& t) { t.set_identity_for_input(0, 0); }},
    {"void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)", "width<=30",
     [](auto& t) { t.set_identity_for_input(31, 0); }},
    {"void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)", "input<width",
     [](auto& t) { t.set_identity_for_input(2, 2); }},
    {"void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)", "input>=0",
     [](auto& t) { t.set_identity_for_input(2, -1); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_external_equation(int, const std::string&)", "width>0",
     [](auto& t) { t.set_value_from_external_equation(0, ""); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_external_equation(int, const std::string&)",
     "width<=30", [](auto& t) { t.set_value_from_external_equation(31, ""); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_internal_equation(int, const std::string&)", "width>0",
     [](auto& t) { t.set_value_from_internal_equation(0, ""); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_internal_equation(int, const std::string&)",
     "width<=30", [](auto& t) { t.set_value_from_internal_equation(31, ""); }},
    {"TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)", "width>=1",
     [](auto& t) {
         t.width = 0;
         t.get_external_equation();
     }},
    {"void BOOL_TRUTH_TABLE::invert_input(int)", "input>=0 && input<get_width()",
     [](auto& t) { t.invert_input(3); }},
    {"void BOOL_TRUTH_TABLE::invert_input(int)", "input>=0 && input<get_width()",
     [](auto& t) { t.invert_input(-1); }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int, int)", exchange_text,
     [](auto& t) { t.rotate_inputs(3, 3); }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int, int)", exchange_text,
     [](auto& t) { t.rotate_inputs(0, -1); }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int*)", permutation_text,
     [](auto& t) {
         rotate(t, {0, 0, 1});
     }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int*)", permutation_text,
     [](auto& t) {
         rotate(t, {0, 3, 1});
     }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int*)", permutation_text,
     [](auto& t) {
         rotate(t, {-1, 0, 1});
     }},
    {"BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_true_factor_for_input(int) const", factor_text,
     [](auto& t) { t.get_true_factor_for_input(3); }},
    {"BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_false_factor_for_input(int) const", factor_text,
     [](auto& t) { t.get_false_factor_for_input(-1); }},
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
