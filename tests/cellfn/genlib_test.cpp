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

TEST(genlib, diagnostics_name_line_and_expectation)
{
    std::string wide = "a";
    for (int i = 0; i < 26; ++i) {
        wide += "*p" + std::to_string(i);
    }
    const std::vector<std::pair<std::string, std::string>> table{
        {"\nGATE ;", "2: expected the name of a cell after GATE"},
        {"GATE g ;", "1: cell g: expected a number as the area instead of ''"},
        {"GATE g 1e999 y=a;", "1: cell g: expected a number as the area instead of '1e999'"},
        {"GATE g 1 y a;", "1: cell g: expected 'output=expression;' after the area"},
        {"GATE g 1\ny=a+\n;", "3: cell g: expected a pin, a constant, '!' or '(' instead of ';'"},
        {"GATE g 1 y=a*\x81;",
         "1: cell g: expected a pin, a constant, '!' or '(' instead of '\\x81'"},
        {"GATE g 1 y=(a;", "1: cell g: expected ')' before ';'"},
        {"GATE g 1 y=a);", "1: cell g: ')' without '('"},
        {"GATE g 1 y=a", "2: cell g: expected ';' before GATE"},
        {"GATE g 1 y=a\nPIN * INV 1 2 3 4 5 6", "2: cell g: expected ';' before PIN"},
        {"GATE g 1 y=" + wide + ";", "1: cell g: 27 inputs; expected at most 26"},
        {"GATE g 1 y=a; PIN b INV 1 2 3 4 5 6",
         "1: cell g: PIN b: expected '*' or an input of the cell's function"},
        {"GATE g 1 y=a; PIN a UP 1 2 3 4 5 6",
         "1: cell g: PIN a: expected INV, NONINV or UNKNOWN instead of 'UP'"},
        {"GATE g 1 y=a; PIN a INV 1 2 3 4 5",
         "2: cell g: PIN a: expected a number as the fall slope instead of 'GATE'"},
        {"PIN a INV 1 2 3 4 5 6", "1: PIN without a cell before it"},
        {"CELL g", "1: expected GATE, PIN or LATCH instead of 'CELL'"},
        {"LATCH d 1 Q=D; PIN * INV 1 2 3 4 5 6\nSEQ Q ANY", "1: note: LATCH passed over"},
    };
    for (const auto& [text, expected] : table) {
        const library read = read_genlib("x", text + "\nGATE next 1 y=a;");
        ASSERT_EQ(read.diagnostics.size(), 1U) << text;
        const diagnostic& first = read.diagnostics.front();
        EXPECT_EQ(std::to_string(first.line) + ": " + first.message, expected);
        EXPECT_EQ(read.cells.empty() ? "" : read.cells.back().name, "next") << text;
    }
}

} // namespace
