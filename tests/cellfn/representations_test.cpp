#include "diagram.h"
#include "function_argument.h"
#include "representations.h"
#include "text_table.h"
#include "usage_error.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace cellfn;

namespace {

expression parsed(const std::string& text)
{
    const std::string statement = text + ";";
    scanner source(statement);
    return read_expression(source);
}

TEST(representations, agree)
{
    std::string parity = "p0";
    for (int i = 1; i < 18; ++i) {
        parity += "^p" + std::to_string(i);
    }
    for (const std::string& text :
         {std::string("CONST0"), std::string("!CONST1+CONST1"), std::string("a'"),
          std::string("!(a*b*c+!(d^e)*a)"), std::string("a*CONST1^b"), parity}) {
        EXPECT_EQ(representations(parsed(text)).check(), "") << text;
    }
    representations wide(parsed(parity));
    EXPECT_EQ(wide.equation(), "-");
    EXPECT_EQ(bdd_text(wide.bdd), "(917499 characters)");
    representations seven(parsed("p0^p1^p2^p3^p4^p5^p6"));
    EXPECT_EQ(bdd_text(seven.bdd).find('\0'), std::string::npos) << "shorter than counted";
    representations flat(parsed("!(a*b*c*!(d+e+f))"));
    EXPECT_EQ(flat.equation(), "~(A*B*C*~(D+E+F))");
    EXPECT_EQ(flat.bdd.nsuppt, 6);
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

TEST(function_argument, formats_and_widths)
{
    struct row {
        std::string text;
        int width;
        std::string column;
        std::string last_input;
    };
    for (const row& each :
         {row{"A B", 0, "8", "B"}, row{"A B", 3, "88", "C"}, row{"F0=B0*B10@1", 11, "", "B10"},
          row{"b0 + b1", 0, "E", "B1"}, row{"0xe8", 0, "E8", "C"}, row{"0X1", 1, "1", "A"},
          row{"", 0, "3", "A"}, row{"F0=1", 0, "3", "B0"}}) {
        const function_argument read = read_function(each.text, each.width);
        if (!each.column.empty()) {
            EXPECT_EQ(read.table.value.get_hex_string(), each.column) << each.text;
        }
        EXPECT_EQ(read.inputs.back(), each.last_input) << each.text;
    }
    for (const char* text : {"0x123", "0x", "0xG", "A#", "F0=", "F0=B27", "B0+", "(A"}) {
        EXPECT_THROW(read_function(text, 0), usage_error) << text;
    }
    EXPECT_THROW(read_function("C", 2), usage_error);
}

TEST(text_table, fits_its_line)
{
    text_table table({"a", "b"});
    table.add({std::string(50, 'x'), ""});
    std::ostringstream aligned;
    table.print_aligned(aligned, 30);
    table.print_aligned(aligned, 0);
    const std::string full(50, 'x');
    EXPECT_EQ(aligned.str(), "a                           b\nxxxxxxxxxxxx...xxxxxxxxxxx  \"\"\n"
                             "a" +
                                 std::string(51, ' ') + "b\n" + full + "  \"\"\n");
    std::ostringstream tsv;
    table.print_tsv(tsv);
    EXPECT_EQ(tsv.str(), "a\tb\n" + full + "\t\n");
}

} // namespace
