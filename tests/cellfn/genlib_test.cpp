#include "column.h"
#include "genlib.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace cellfn;

namespace {

std::string column_of(const std::string& text)
{
    const std::string statement = text + ";";
    scanner source(statement);
    return to_table(read_expression(source)).value.get_hex_string();
}

TEST(expression, columns)
{
    const std::vector<std::pair<std::string, std::string>> table{
        {"a*b", "8"},       {"a&b", "8"},           {"a b", "8"},        {"a(b)", "8"},
        {"a!b", "2"},       {"a'b", "4"},           {"a+b", "E"},        {"a|b", "E"},
        {"a^b", "6"},       {"a^b*c", "6A"},        {"a+b^c", "BE"},     {"!a*b", "4"},
        {"!(a*b)", "7"},    {"(a*b)'", "7"},        {"!a'", "2"},        {"!!a''", "2"},
        {"!(a+b)'c", "E0"}, {"a + # one\n b", "E"}, {"a*a + b*!b", "A"}, {"CONST0", "0"},
        {"CONST1*a", "2"},  {"!CONST0", "3"},       {"B[1]*x_2$", "8"},  {"!(A1*A2+B)", "07"},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(column_of(text), expected) << text;
    }
}

TEST(expression, depth_costs_no_stack)
{
    const std::string signs(1000001, '!');
    EXPECT_EQ(column_of(signs + "a"), "1");
    const std::string deep(1000000, '(');
    EXPECT_THROW(column_of(deep + "a" + std::string(deep.size(), ')')), text_error);
    std::string sum = "a";
    for (int i = 0; i < 1000000; ++i) {
        sum += "+b";
    }
    EXPECT_EQ(column_of(sum), "E");
}

TEST(genlib, cells)
{
    const library read = read_genlib("x", "GATE zero 0 O=CONST0;GATE n2 1.5 O=!(b*a);PIN * INV 1 "
                                          "999 1.0 .2 1.0 0.2 #\n#GATE no 1 O=a;\nGATE last\n 2\n"
                                          "Y = a b\n+c ;PIN b NONINV 1 2 3 4 5 6\r\n");
    ASSERT_EQ(read.cells.size(), 3U);
    EXPECT_TRUE(read.diagnostics.empty());
    EXPECT_EQ(read.cells[1].name, "n2");
    EXPECT_EQ(read.cells[1].area, 1.5);
    EXPECT_EQ(read.cells[1].function.pins, (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(read.cells[2].line, 3);
    EXPECT_EQ(read.cells[2].output, "Y");
}

} // namespace
