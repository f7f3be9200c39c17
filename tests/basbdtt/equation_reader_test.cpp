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

/// What the definition below is pinned to.
TEST(equation_reader, examples)
{
    const struct {
        bool external;
        int width;
        const char *text, *column;
    } cases[] = {
        {true, 2, "A1", "A"},         {true, 2, "1A", "F"},         {true, 2, "A+", "F"},
        {true, 3, "AB+!C", "8F"},     {true, 3, "A(B+C)", "A8"},    {true, 3, "(A+B)(B+C)", "EE"},
        {true, 3, "(A)!B", "33"},     {true, 3, "0(B)", "CC"},      {true, 2, "A)0(B+0", "C"},
        {false, 3, "B0*B1@B2", "78"}, {false, 3, "B0+B1@B2", "BE"}, {false, 2, "(B0)(X)", "A"},
        {false, 2, "(B0)~B1", "A"},   {false, 2, "(f0=B1)", "C"},   {false, 2, "B0~B1", "3"},
    };
    for (const auto& each : cases) {
        BOOL_TRUTH_TABLE table;
        read(table, each.external, each.width, each.text);
        EXPECT_EQ(table.value.get_hex_string(), each.column) << each.text;
    }
    EXPECT_EQ(host_recorder::take_statuses(), strings());
}

/// Short texts at random: all that the definition does to them, the readers do, too. A text that is
/// refused sends one message and changes nothing.
TEST(equation_reader, agrees_with_its_definition)
{
    using namespace std::string_literals;
    constexpr unsigned seed = 20261122;
    std::mt19937 random(seed);
    const std::string alphabets[] = {"AaBbCDG()()!~+* 01\t-\n\x7F\xE4\0"s, "AB()!+*",   "A()+!0 ",
                                     "B0B1B2B35()()~@+*  b$1\tF0=",        "B01()~@+*", "(F0=)B1f"};
    for (int round = 0; round < 100000; ++round) {
        const std::size_t kind = random() % 6;
        const bool external = kind < 3;
        const int width = static_cast<int>(random() % 6) + 1;
        std::string text;
        for (std::size_t length = random() % 16; length-- > 0;) {
            text += alphabets[kind][random() % alphabets[kind].size()];
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + ", width " + std::to_string(width) + text);
        BOOL_TRUTH_TABLE table;
        table.set_value_from_hex_string(3, "5A");
        read(table, external, width, text);
        const strings messages = host_recorder::take_statuses();
        try {
            const std::uint64_t column = literal_reader{external, width}.read(text);
            ASSERT_EQ(messages, strings());
            std::uint64_t words = table.value.words[0];
            words |= width == 6 ? std::uint64_t{table.value.words[1]} << 32 : 0;
            ASSERT_EQ(words, column);
            ASSERT_EQ(table.value.bit_count, 1 << width);
            ASSERT_EQ(table.width, width);
        } catch (const std::string& message) {
            ASSERT_EQ(messages, strings{message});
            ASSERT_EQ(table.value.get_hex_string(), "5A");
            ASSERT_EQ(table.width, 3);
        }
    }
}

struct equation {
    std::string text;
    TRUTH_TABLE_VAL column;

    void join(char op, const equation& right)
    {
        op == '*'   ? column &= right.column
        : op == '@' ? column ^= right.column
                    : column |= right.column;
        text += op + right.text;
    }
};

equation join(const equation& left, char op, const equation& right)
{
    equation result = left;
    result.join(op, right);
    result.text = "(" + result.text + ")";
    return result;
}

std::vector<equation> literals(int width)
{
    std::vector<equation> made;
    BOOL_TRUTH_TABLE table;
    for (int input = 0; input < width; ++input) {
        table.set_identity_for_input(width, input);
        made.push_back({"B" + std::to_string(input), table.value});
        table.invert_input(input);
        made.push_back({"~B" + std::to_string(input), table.value});
    }
    return made;
}

void expect_column(const equation& expected, int width)
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_internal_equation(width, expected.text);
    ASSERT_EQ(table.value.words, expected.column.words) << expected.text.substr(0, 1000);
}

/// Inputs of a word, of a block and above, from a few to thousands: random equations joined from
/// random ones, with the columns that the operators on columns make.
TEST(equation_reader, joins_inputs_of_any_number)
{
    std::mt19937 random(11);
    for (unsigned round = 0; round < 1500; ++round) {
        const int width = 7 + static_cast<int>(random() % 9);
        const TRUTH_TABLE_VAL one(width, 1);
        std::vector<equation> made = literals(width);
        made.push_back({"1", one});
        for (unsigned joins = round % 100 == 0 ? 1000 : round % 64; joins > 0; --joins) {
            equation result = join(made[random() % made.size()], "*@+"[random() % 3],
                                   made[random() % made.size()]);
            if (random() % 2 == 0) {
                result.column ^= one;
                result.text = "~" + result.text;
            }
            made.push_back(result);
        }
        expect_column(made.back(), width);
    }
}

/// More terms than are joined at a time, and more than an input is fixed in. What they are joined
/// with is in some blocks, by the inputs 12 and 13, one operand of a product.
TEST(equation_reader, joins_many_terms)
{
    std::mt19937 random(12);
    constexpr int width = 14;
    const std::vector<equation> made = literals(width);
    const equation low = join(join(made[0], '*', made[12]), '+', join(made[2], '*', made[14]));
    const equation product = join(join(made[24], '@', made[26]), '*', low);
    for (const char op : {'*', '@', '+'}) {
        for (const int terms : {50, 1500}) {
            equation all = made[0];
            for (int term = 0; term < terms; ++term) {
                equation next = made[random() % made.size()];
                for (int more = 0; more < 7; ++more) {
                    next.join(op == '+' ? '*' : '+', made[random() % made.size()]);
                }
                next.text = "(" + next.text + ")";
                all.join(op, next);
            }
            all.text = "(" + all.text + ")";
            expect_column(join(product, op, all), width);
        }
    }
}

/// Millions of characters in shapes that a recursive or a rescanning reader does not survive.
TEST(equation_reader, long_texts_of_any_shape)
{
    constexpr std::size_t size = 5000000;
    const struct {
        std::string piece, middle, after;
        bool external, is_read;
    } shapes[] = {
        {"G+H+", "I", "", true, true},   {"B6@B7@", "B8", "", false, true},
        {"!", "G", "", true, true},      {"(", "G", ")", true, true},
        {"G+(H*", "I", ")", true, true}, {"~(B6*B7@", "B8", ")", false, true},
        {"(", "", "", true, false},      {")", "", "", false, false},
        {")(", "G", "", true, true},     {"(G)!", "H", "", true, true},
        {"(G+", "$", ")", true, false},  {" ", "G H", " ", true, true},
    };
    for (const auto& each : shapes) {
        const std::size_t pieces = size / (each.piece.size() + each.after.size());
        std::string text;
        for (std::size_t i = 0; i < pieces; ++i) {
            text += each.piece;
        }
        text += each.middle;
        for (std::size_t i = 0; i < pieces; ++i) {
            text += each.after;
        }
        BOOL_TRUTH_TABLE table;
        read(table, each.external, 9, text);
        EXPECT_EQ(host_recorder::take_statuses().size(), each.is_read ? 0U : 1U) << each.piece;
        EXPECT_EQ(table.width, each.is_read ? 9 : 0) << each.piece;
    }
}

TEST(equation_items, cut_the_level_of_a_position)
{
    using table = BOOL_TRUTH_TABLE;
    EXPECT_EQ(table::get_next_eqn_item("A* B", 2), " B");
    EXPECT_EQ(table::get_next_eqn_item("(A)B)", 0), "(A)B");
    EXPECT_EQ(table::get_next_eqn_item("AB", 2) + table::get_next_eqn_item("AB", -1), "");
    EXPECT_EQ(table::get_last_eqn_item("(A* B+C)", 5), "A* B+");
    EXPECT_EQ(table::get_last_eqn_item("A+B", -1) + table::get_last_eqn_item("", 7), "");
    EXPECT_EQ(table::get_last_eqn_item("(A", std::numeric_limits<int>::max()), "A");
}

} // namespace
