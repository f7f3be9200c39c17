#include "basbdcells/function.h"
#include "basbdcells/library.h"
#include "representations.h"
#include "status.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <variant>

using namespace cellfn;
using namespace basbdcells;

namespace {

expression parsed(const std::string& text)
{
    return std::get<function>(read_function(text)).source;
}

std::uint64_t count_literals_in(const std::string& equation)
{
    return static_cast<std::uint64_t>(std::count_if(
        equation.begin(), equation.end(), [](char c) { return c >= 'A' && c <= 'Z' && c != 'F'; }));
}

/// All functions of three inputs, and some of as many as have no input F.
TEST(representations, agree_and_have_as_many_literals_as_counted)
{
    std::mt19937 random(11); // fixed
    for (unsigned i = 0; i < 512; ++i) {
        TRUTH_TABLE_VAL column(i < 256 ? 3 : 5, 0);
        column.words[0] = i < 256 ? i : static_cast<std::uint32_t>(random());
        const std::string text = "0x" + column.get_hex_string();
        const function read = std::get<function>(read_function(text));
        representations all(parsed(read.table.get_internal_equation()));
        EXPECT_EQ(all.check(), "") << text;
        EXPECT_EQ(all.literals.external, count_literals_in(all.external())) << text;
        EXPECT_EQ(all.literals.internal, count_literals_in(all.internal())) << text;
        EXPECT_EQ(bdd_text(all.bdd).find('\0'), std::string::npos) << "shorter than counted";
    }
}

TEST(representations, every_disagreement_is_found)
{
    representations all(parsed("a*b+c"));
    all.texts.hexadecimal = "F9";
    all.texts.external = "A B + C !A";
    all.texts.internal = "F0=B0*B3";
    all.tree.function.complsiginfunc(all.signals.data());
    all.bdd.setsigto1(&all.signals[1]);
    const std::string found = all.check();
    for (const char* part :
         {"the column reads back as F9", "the external equation reads back as D8",
          "the internal equation is refused: ", "the tree's column is F4",
          "the BDD differs from the column in entry 1"}) {
        EXPECT_NE(found.find(part), std::string::npos) << part << " in " << found;
    }
}

/// What both take is one function, unless the library's reader drops a part: it implies a product
/// after a letter only, and takes a blank operand for 1.
TEST(function, means_what_the_library_reads)
{
    std::mt19937 random(3); // fixed
    int accepted = 0;
    for (int round = 0; round < 40000; ++round) {
        std::string text;
        bool is_dropping = false;
        for (std::size_t left = random() % 10; left > 0; --left) {
            const std::vector<const char*> elements{"A", "C", "(", ")", "!", "~", "*", "+", " 0 "};
            const std::string next = elements[random() % elements.size()];
            const char last = text.empty() ? '+' : text.back();
            is_dropping |= (last == ')' || last == ' ') &&
                           std::string("AC(!~ ").find(next.front()) != std::string::npos;
            text += next;
        }
        const auto read = read_function(text, 3);
        BOOL_TRUTH_TABLE table;
        table.set_value_from_external_equation(3, text);
        const bool is_refused = !take_messages().empty();
        if (const auto* found = std::get_if<function>(&read); found != nullptr && !is_dropping) {
            EXPECT_TRUE(!is_refused && found->table.value == table.value) << text;
            ++accepted;
        }
    }
    EXPECT_GT(accepted, 1000);
}

TEST(expression, depth_costs_no_stack)
{
    const auto column_of = [](const std::string& text) {
        return table_of(parsed(text)).value.get_hex_string();
    };
    EXPECT_EQ(column_of(std::string(1000001, '!') + "a"), "1");
    const std::string deep(1000000, '(');
    EXPECT_EQ(read_function(deep + "a" + std::string(deep.size(), ')')).index(), 1U);
    std::string sum = "a";
    for (int i = 0; i < 1000000; ++i) {
        sum += "+b";
    }
    EXPECT_EQ(column_of(sum), "E");
    EXPECT_EQ(representations(parsed(sum)).check(), "");
}

} // namespace
