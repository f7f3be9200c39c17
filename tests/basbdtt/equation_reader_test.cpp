// The readers of both equation texts against examples and against their definition.
#include "basbdtt.h"

#include "host_recorder.h"
#include "literal_reader.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

using strings = std::vector<std::string>;

void read(BOOL_TRUTH_TABLE& table, bool external, int width, const std::string& text)
{
    external ? table.set_value_from_external_equation(width, text)
             : table.set_value_from_internal_equation(width, text);
}

std::string hex(bool external, int width, const std::string& text)
{
    BOOL_TRUTH_TABLE table;
    read(table, external, width, text);
    EXPECT_EQ(host_recorder::take_statuses(), strings()) << text;
    return table.value.get_hex_string();
}

struct example {
    int width;
    const char *text, *column;
};

TEST(EquationReader, Examples)
{
    const example external[] = {
        {2, "A B", "8"},     {2, "ab", "8"},      {2, "A*B", "8"},      {2, "A\tB", "8"},
        {2, "a+b", "E"},     {2, "!!A", "A"},     {2, "A + B*!A", "E"}, {2, "!(A+B)", "1"},
        {2, "~A", "5"},      {2, "(A)B", "A"},    {2, "(A) B", "A"},    {3, "(A+B)(B+C)", "EE"},
        {2, "1A", "F"},      {2, "A1", "A"},      {2, "A 1", "A"},      {3, "(A+B)*(B+C)", "EC"},
        {2, "", "F"},        {2, "   ", "F"},     {2, "!", "0"},        {3, "A(B+C)", "A8"},
        {2, "A+", "F"},      {2, "A*", "A"},      {2, "+A", "F"},       {2, "()", "F"},
        {2, "0", "0"},       {2, "1", "F"},       {3, "A B C", "80"},   {3, "A+B+C", "FE"},
        {3, "AB+!C", "8F"},  {3, "!A B", "44"},   {3, "(A)!B", "33"},   {3, "0(B)", "CC"},
        {3, "C", "F0"},      {2, "(A)(B$)", "A"}, {2, "A)+(B", "A"},    {2, "A)0(B+0", "C"},
        {2, "(B9$)!A", "5"}, {1, "a", "2"},
    };
    const example internal[] = {
        {2, "F0=B0*B1", "8"},  {2, "b0*b1", "8"},   {2, "B0 * B1", "8"},
        {2, "b0 + b1", "E"},   {2, "B1@B0", "6"},   {2, "B1", "C"},
        {2, "~(B0*B1)", "7"},  {2, "~B0*B1", "4"},  {1, "~B0", "1"},
        {3, "B0+B1*B2", "EA"}, {3, "~~B2", "F0"},   {3, "(B0+B1)*B2", "E0"},
        {3, "0", "00"},        {3, "1", "FF"},      {3, "B0*B1@B2", "78"},
        {2, "B0 B1", "A"},     {2, "B0~B1", "3"},   {4, "B3@B2@B1@B0", "6996"},
        {2, "(B0)~B1", "A"},   {2, "(B0)(X)", "A"}, {3, "F0=(~B2*B0+B2*(B0+B1))", "EA"},
        {2, "(f0=B1)", "C"},   {1, "B0", "2"},      {2, "(F0=(f0=B0)+B1)", "E"}};
    for (const example& each : external) {
        EXPECT_EQ(hex(true, each.width, each.text), each.column) << each.text;
    }
    for (const example& each : internal) {
        EXPECT_EQ(hex(false, each.width, each.text), each.column) << each.text;
    }
    for (const auto& [width, text, input] :
         {std::tuple(13, "B12", 12), std::tuple(11, "B10", 10), std::tuple(11, "B100", 10)}) {
        BOOL_TRUTH_TABLE table;
        table.set_value_from_internal_equation(width, text);
        EXPECT_TRUE(table.is_identity_for_input(input)) << text;
    }
}

TEST(EquationReader, RefusalSendsOneMessageAndChangesNothing)
{
    const auto unexpected = [](const char* shown) {
        return std::string("Unexpected equation element '") + shown + "'";
    };
    const struct {
        bool external;
        std::string message;
        strings texts;
    } cases[] = {
        {true, unexpected("-"), {"A-B", ")(-"}},
        {true, unexpected("2"), {"2"}},
        {true, unexpected("$"), {"A+(B$)", "(A-B)+$"}},
        {true, unexpected("\n"), {"A\n"}},
        {true, unexpected("\\xE4"), {"A\xE4"}},
        {true, unexpected("\\x00"), {std::string(1, '\0')}},
        {true, "Unbalanced parentheses in equation", {"(A", "(A-", "B+C+(A-"}},
        {true, "Equation without an element outside parentheses", {")("}},
        {true, "Equation input 2 in a table of width 2", {"C", "C+(A-B)"}},
        {false, unexpected("F"), {"f0=B0", " F0=B0", "F0=F0=B0", "( F0=B0)"}},
        {false, unexpected("!"), {"!B0"}},
        {false, unexpected("A"), {"A"}},
        {false, unexpected("X"), {"B0+x", "B0+(x)"}},
        {false, unexpected("3"), {"B123"}},
        {false, "Blank equation or operand", {"", "   ", "F0=", "B0+", "+B0", "~", "(F0=)"}},
        {false, "Unbalanced parentheses in equation", {"(B0"}},
        {false, "Equation without an element outside parentheses", {")B0("}},
        {false, "Equation input 'B' without a number", {"B", "BX"}},
        {false, "Equation input 2 in a table of width 2", {"B2"}},
    };
    for (const auto& each : cases) {
        for (const std::string& text : each.texts) {
            BOOL_TRUTH_TABLE table;
            table.set_value_from_hex_string(3, "5A");
            read(table, each.external, 2, text);
            EXPECT_EQ(host_recorder::take_statuses(), strings{each.message}) << text;
            EXPECT_EQ(table.width, 3);
            EXPECT_EQ(table.value.get_hex_string(), "5A");
        }
    }
}

/// Short texts at random: all that the definition does to them, the readers do, too.
TEST(EquationReader, AgreesWithItsDefinition)
{
    constexpr unsigned seed = 20261122;
    std::mt19937 random(seed);
    const std::string alphabets[] = {"AaBbCDG()()!~+* 01$\t",       "AB()!+*",   "A()+!0 ",
                                     "B0B1B2B35()()~@+*  b$1\tF0=", "B01()~@+*", "(F0=)B1f"};
    for (int round = 0; round < 150000; ++round) {
        const std::size_t kind = random() % 6;
        const bool external = kind < 3;
        const int width = static_cast<int>(random() % 6) + 1;
        std::string text;
        for (std::size_t length = random() % 16; length-- > 0;) {
            text += alphabets[kind][random() % alphabets[kind].size()];
        }
        BOOL_TRUTH_TABLE table;
        read(table, external, width, text);
        const strings messages = host_recorder::take_statuses();
        try {
            const std::uint64_t column = literal_reader{external, width}.read(text);
            ASSERT_EQ(messages, strings()) << "seed " << seed << ": " << text;
            std::uint64_t words = table.value.words[0];
            words |= width == 6 ? std::uint64_t{table.value.words[1]} << 32 : 0;
            ASSERT_EQ(words, column) << "seed " << seed << ", width " << width << ": " << text;
            ASSERT_EQ(table.value.bit_count, 1 << width);
        } catch (const std::string& message) {
            ASSERT_EQ(messages, strings{message}) << "seed " << seed << ": " << text;
        }
    }
}

struct equation {
    std::string text;
    TRUTH_TABLE_VAL column;
};

/// Inputs of a word, of a block and above, from a few to thousands: random equations joined from
/// random ones, with the columns that the operators on columns make.
TEST(EquationReader, JoinsInputsOfAnyNumber)
{
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    for (unsigned round = 0; round < 1500; ++round) {
        const int width = 7 + static_cast<int>(random() % 9);
        const TRUTH_TABLE_VAL one(width, 1);
        std::vector<equation> made = {{"1", one}};
        BOOL_TRUTH_TABLE table;
        for (int input = 0; input < width; ++input) {
            table.set_identity_for_input(width, input);
            made.push_back({"B" + std::to_string(input), table.value});
        }
        for (unsigned joins = round % 100 == 0 ? 1000 : round % 64; joins > 0; --joins) {
            equation left = made[random() % made.size()];
            const equation& right = made[random() % made.size()];
            const char op = "*@+"[random() % 3];
            op == '*'   ? left.column &= right.column
            : op == '@' ? left.column ^= right.column
                        : left.column |= right.column;
            left.text = "(" + left.text + op + right.text + ")";
            if (random() % 2 == 0) {
                left.column ^= one;
                left.text = "~" + left.text;
            }
            made.push_back(left);
        }
        table.set_value_from_internal_equation(width, made.back().text);
        ASSERT_EQ(table.value.words, made.back().column.words) << "seed " << seed << ": " << round;
    }
}

std::string repeated(const std::string& piece, std::size_t characters)
{
    std::string text;
    for (text.reserve(characters); text.size() < characters;) {
        text += piece;
    }
    return text;
}

/// Millions of characters in shapes that a recursive or a rescanning reader does not survive.
TEST(EquationReader, LongTextsOfAnyShape)
{
    constexpr std::size_t size = 5000000;
    const struct {
        std::string before, piece, middle, after;
        bool external, is_read;
    } shapes[] = {
        {"", "G+H+", "I", "", true, true},   {"", "B6@B7@", "B8", "", false, true},
        {"", "!", "G", "", true, true},      {"", "(", "G", ")", true, true},
        {"", "G+(H*", "I", ")", true, true}, {"", "~(B6*B7@", "B8", ")", false, true},
        {"", "(", "", "", true, false},      {"", ")", "", "", false, false},
        {"", ")(", "G", "", true, true},     {"", "(G)!", "H", "", true, true},
        {"G", " ", "H", "", true, true},     {"", "(G+", "$", ")", true, false},
    };
    for (const auto& each : shapes) {
        const std::size_t pieces = size / (each.piece.size() + each.after.size());
        const std::string text = each.before + repeated(each.piece, pieces * each.piece.size()) +
                                 each.middle + repeated(each.after, pieces * each.after.size());
        BOOL_TRUTH_TABLE table;
        read(table, each.external, 9, text);
        EXPECT_EQ(host_recorder::take_statuses().size(), each.is_read ? 0U : 1U) << each.piece;
        EXPECT_EQ(table.width, each.is_read ? 9 : 0) << each.piece;
    }
}

TEST(EquationItems, CutTheLevelOfAPosition)
{
    using table = BOOL_TRUTH_TABLE;
    EXPECT_EQ(table::get_next_eqn_item("(A+B)*C", 1), "A+B");
    EXPECT_EQ(table::get_next_eqn_item("A* B", 2), " B");
    EXPECT_EQ(table::get_next_eqn_item("(A)B)", 0), "(A)B");
    EXPECT_EQ(table::get_next_eqn_item("AB", 2) + table::get_next_eqn_item("AB", -1), "");
    EXPECT_EQ(table::get_last_eqn_item("(A* B+C)", 4), "A* B");
    EXPECT_EQ(table::get_last_eqn_item("(A* B+C)", 5), "A* B+");
    EXPECT_EQ(table::get_last_eqn_item("A+B", 0), "A");
    EXPECT_EQ(table::get_last_eqn_item("A+B", -1) + table::get_last_eqn_item("", 7), "");
    EXPECT_EQ(table::get_last_eqn_item("(A", std::numeric_limits<int>::max()), "A");
}

} // namespace
