// The preconditions: text and signature are what the standard assertion would print.
#include "basbdtt.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <regex>

namespace {

struct misuse {
    const char* signature;
    std::vector<std::pair<int, const char*>> stops; ///< an argument and the condition it breaks
    void (*call)(BOOL_TRUTH_TABLE&, int);           ///< on a table of three inputs
};

/// As this compiler spells it: clang puts a blank before & and *.
std::string spelled(std::string signature)
{
#ifdef __clang__
    signature = std::regex_replace(signature, std::regex("[&*]"), " $&");
#endif
    return signature;
}

/// The regular expression that matches `text` and nothing else.
std::string literally(const std::string& text)
{
    std::string pattern;
    for (const char c : text) {
        pattern += std::isalnum(c) != 0 ? std::string{c} : std::string{'[', c, ']'};
    }
    return pattern;
}

constexpr const char* column = "TRUTH_TABLE_VAL::TRUTH_TABLE_VAL(int, int)";
constexpr const char* in_range = "input>=0 && input<get_width()";
constexpr const char* both_in_range = "i0>=0 && i0<get_width() && i1>=0 && i1<get_width()";
constexpr const char* factor = "input>=0 && input<get_width() && get_width()>0";
constexpr const char* permuting = "perm[i]>=0 && perm[i]<get_width() && !(x & (1<<perm[i]))";

void rotate(BOOL_TRUTH_TABLE& table, int second)
{
    std::array<int, 3> perm{0, second, 1};
    table.rotate_inputs(perm.data());
}

// NOLINTBEGIN(readability-identifier-length)
const misuse misuses[] = {
    {column, {{0, "width>=1"}, {31, "width<=30"}}, [](auto&, int w) { TRUTH_TABLE_VAL(w, 1); }},
    {column,
     {{0, "width>=1"}},
     [](auto& t, int w) { t.width = static_cast<signed char>(w), rotate(t, 2); }},
    {column,
     {{127, "width<=30"}},
     [](auto& t, int w) { t.width = static_cast<signed char>(w), t.get_true_factor_for_input(0); }},
    {"void TRUTH_TABLE_VAL::set_from_hex_string(int, const std::string&)",
     {{-1, "width>=0"}, {31, "width<=30"}},
     [](auto& t, int w) { t.value.set_from_hex_string(w, ""); }},
    {"void BOOL_TRUTH_TABLE::set_value(int, const TRUTH_TABLE_VAL&)",
     {{0, "width>0"}, {31, "width<=30"}},
     [](auto& t, int w) { t.set_value(w, t.value); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_hex_string(int, const std::string&)",
     {{0, "width>0"}, {31, "width<=30"}},
     [](auto& t, int w) { t.set_value_from_hex_string(w, "1"); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_external_equation(int, const std::string&)",
     {{0, "width>0"}, {31, "width<=30"}},
     [](auto& t, int w) { t.set_value_from_external_equation(w, "A"); }},
    {"void BOOL_TRUTH_TABLE::set_value_from_internal_equation(int, const std::string&)",
     {{0, "width>0"}, {31, "width<=30"}},
     [](auto& t, int w) { t.set_value_from_internal_equation(w, "B0"); }},
    {"bool BOOL_TRUTH_TABLE::is_identity_for_input(int) const",
     {{3, "input<get_width()"}, {-1, "input>=0"}},
     [](auto& t, int i) { t.is_identity_for_input(i); }},
    {"void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)",
     {{0, "width>0"}, {31, "width<=30"}, {1, "input<width"}},
     [](auto& t, int w) { t.set_identity_for_input(w, 1); }},
    {"void BOOL_TRUTH_TABLE::set_identity_for_input(int, int)",
     {{-1, "input>=0"}},
     [](auto& t, int i) { t.set_identity_for_input(2, i); }},
    {"void BOOL_TRUTH_TABLE::invert_input(int)",
     {{3, in_range}, {-1, in_range}},
     [](auto& t, int i) { t.invert_input(i); }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int, int)",
     {{3, both_in_range}, {-1, both_in_range}},
     [](auto& t, int i) { t.rotate_inputs(i, i); }},
    {"void BOOL_TRUTH_TABLE::rotate_inputs(int*)",
     {{0, permuting}, {3, permuting}, {-1, permuting}},
     [](auto& t, int i) { rotate(t, i); }},
    {"BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_true_factor_for_input(int) const",
     {{3, factor}, {-1, factor}},
     [](auto& t, int i) { t.get_true_factor_for_input(i); }},
    {"BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_false_factor_for_input(int) const",
     {{3, factor}, {-1, factor}},
     [](auto& t, int i) { t.get_false_factor_for_input(i); }},
};
// NOLINTEND(readability-identifier-length)

TEST(assertion_death_test, text_and_signature)
{
    BOOL_TRUTH_TABLE table;
    table.set_identity_for_input(3, 0);
    for (const misuse& each : misuses) {
        for (const auto& [argument, text] : each.stops) {
            const std::string line =
                std::string(": ") + spelled(each.signature) + ": Assertion `" + text + "' failed.";
            EXPECT_EXIT(each.call(table, argument), testing::KilledBySignal(SIGABRT),
                        literally(line));
        }
    }
}

} // namespace
