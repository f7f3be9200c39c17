#include "column.h"
#include "diagram.h"
#include "function_argument.h"
#include "representations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace cellfn;

namespace {

expression parsed(const std::string& text)
{
    const std::string statement = text + ";";
    scanner source(statement);
    return read_expression(source);
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
        representations all(function_argument(text, 0).source());
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

/// What the library's readers drop is not in the expression, so every drop must be refused.
TEST(function_argument, means_what_the_library_reads)
{
    std::mt19937 random(3); // fixed
    int accepted = 0;
    for (int round = 0; round < 40000; ++round) {
        std::string text;
        for (std::size_t left = random() % 10; left > 0; --left) {
            const std::vector<const char*> elements{"A", "c", "B1", "b10", "(", ")",
                                                    "!", "~", "*",  "+",   "@", "0"};
            text += elements[random() % elements.size()];
        }
        try {
            const function_argument read(text, 0);
            EXPECT_TRUE(to_table(read.source()).value == read.table.value) << text;
            ++accepted;
        } catch (const std::runtime_error&) {
        }
    }
    EXPECT_GT(accepted, 1000);
}

TEST(expression, depth_costs_no_stack)
{
    const auto column_of = [](const std::string& text) {
        return to_table(parsed(text)).value.get_hex_string();
    };
    EXPECT_EQ(column_of(std::string(1000001, '!') + "a"), "1");
    const std::string deep(1000000, '(');
    EXPECT_THROW(column_of(deep + "a" + std::string(deep.size(), ')')), text_error);
    std::string sum = "a";
    for (int i = 0; i < 1000000; ++i) {
        sum += "+b";
    }
    EXPECT_EQ(column_of(sum), "E");
    EXPECT_EQ(representations(parsed(sum)).check(), "");
}

} // namespace
