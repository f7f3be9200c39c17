#include "basbdcells/function.h"
#include "basbdcells/library.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

using namespace basbdcells;

namespace {

/// The outputs with their columns and areas: "a.Y=8/1.5 g.Y=2".
std::string listed(const library& read)
{
    std::ostringstream all;
    for (const cell& each : read.cells) {
        for (const output& drives : each.outputs) {
            all << (all.tellp() > 0 ? " " : "") << each.name << '.' << drives.name << '='
                << table_of(drives.function).value.get_hex_string();
            if (each.area) {
                all << '/' << *each.area;
            }
        }
    }
    return all.str();
}

/// The errors, one behind the other.
std::string errors_of(const library& read)
{
    std::string all;
    for (const diagnostic& each : read.diagnostics) {
        if (each.is_error) {
            all += (all.empty() ? "" : "; ") + std::to_string(each.line) + ": " + each.message;
        }
    }
    return all;
}

/// A text in which "$" stands for a faultless cell, and a "`" for a quotation mark. Without a "$"
/// it is what stands before that cell in a library.
std::string with_neighbour(std::string text)
{
    std::replace(text.begin(), text.end(), '`', '"');
    if (text.find('$') == std::string::npos) {
        text = "library(l){" + text + "\n$}";
    }
    return text.replace(text.find('$'), 1,
                        "cell(g){pin(A){direction:input;}pin(Y){direction:output;function:A;}}");
}

struct liberty_case {
    std::string text;
    std::string listed;
    std::string errors;
};

void check(const std::vector<liberty_case>& cases)
{
    for (const liberty_case& each : cases) {
        const library read = read_library(with_neighbour(each.text));
        EXPECT_EQ(listed(read), each.listed) << each.text;
        EXPECT_EQ(errors_of(read), each.errors) << each.text;
    }
}

/// A cell with two inputs and further statements.
std::string in_cell(const std::string& statements)
{
    return "cell(a){pin(A,B){direction:input;}\n" + statements + "}";
}

/// ... and an output.
std::string with_output(const std::string& statements)
{
    return in_cell(statements + "pin(Y){direction:output;function:`A B`;}");
}

std::string in_output(const std::string& statements)
{
    return in_cell("pin(Y){direction:output;" + statements + "}");
}

TEST(liberty, what_cannot_be_read_is_told_and_the_rest_is_listed)
{
    check({
        {"cell(){}", "g.Y=2", "1: expected the name of a cell in its parentheses"},
        {"cell(a b){}", "g.Y=2", "1: expected the name of a cell in its parentheses"},
        {"cell(``){}", "g.Y=2", "1: expected the name of a cell in its parentheses"},
        {"cell a{}", "g.Y=2", "1: expected ':' or '(' after 'cell'"},
        {"cell(a{}", "g.Y=2", "1: expected ')' before '{'"},
        {"cell(a){cell(b){}}", "g.Y=2",
         "1: cell a: expected '}' before the next cell, for the group of line 1; 2: cell g: "
         "expected inside a library"},
        {"x{y:1;}", "g.Y=2", "1: expected ':' or '(' after 'x'"},
        {"x", "g.Y=2", "1: expected ':' or '(' after 'x'"},
        {" : x;", "g.Y=2", "1: expected a statement or '}' instead of ':'"},
        {"= 3", "g.Y=2", "1: expected a statement or '}' instead of '='"},
        {",;;", "g.Y=2", "1: expected a statement or '}' instead of ','"},
        {"{", "g.Y=2",
         "1: expected a statement or '}' instead of '{'; 2: expected '}' before the next cell, for "
         "the group of line 1"},
        {"{x:1;}", "g.Y=2", "1: expected a statement or '}' instead of '{'"},
        {"}", "g.Y=2", "2: cell g: expected inside a library"},
        {"x(`a);", "g.Y=2", "1: string without an end"},
        {"x:`a;\n y:`b`;", "g.Y=2", "2: expected ':' or '(' after 'b'; 2: string without an end"},
        {"a(b", "g.Y=2", "1: expected ')' before 'cell'"},
        {"a(1,2;", "g.Y=2", "1: expected ')' before ';'"},
        {"templ(x){y:1;", "g.Y=2", "2: expected '}' before the next cell, for the group of line 1"},
        {"include_file(x.lib);", "g.Y=2", "1: include_file is not followed"},
        {"pin(Y){function:`1`;}", "g.Y=2", "1: pin Y: expected inside a cell"},
        {"\x01", "g.Y=2", "1: expected ':' or '(' after '\\x01'"},
        {"foo(l){$}", "g.Y=2", "1: expected a library instead of 'foo'"},
        {"$", "g.Y=2", "1: cell g: expected inside a library"},
        {"library(l) $}", "g.Y=2", "1: cell g: expected inside a library"},
        {"library(l){$", "g.Y=2", "1: library without an end"},
        {"library(l){$}}", "g.Y=2", "1: '}' without '{'"},
        {"library(l){$}junk", "g.Y=2", "1: expected ':' or '(' after 'junk'"},
        {"library(l){$/* x", "g.Y=2", "1: comment without an end"},
        {"library(l){$x:`y", "g.Y=2", "1: string without an end"},
        {"library(l){$x(y", "g.Y=2",
         "1: expected ')' before the end of the text; 1: library without an end"},
        {"library(l){$x(){", "g.Y=2", "1: group without an end; 1: library without an end"},
        {"library(l){$} library(", "g.Y=2", "1: expected ')' before the end of the text"},
        {with_output("area:x;"), "a.Y=8 g.Y=2",
         "2: cell a: expected a number as the area instead of 'x'"},
        {with_output("area:1e999;"), "a.Y=8 g.Y=2",
         "2: cell a: expected a number as the area instead of '1e999'"},
        {with_output("area:;"), "a.Y=8 g.Y=2", "2: cell a: expected a value of 'area'"},
        {with_output("area:1/0;"), "a.Y=8 g.Y=2",
         "2: cell a: expected a number as the area instead of '1/0'"},
        {with_output("area:2*(3;"), "a.Y=8 g.Y=2",
         "2: cell a: expected a number as the area instead of '2*(3'"},
        {with_output("area 1;"), "a.Y=8 g.Y=2", "2: cell a: expected ':' or '(' after 'area'"},
        {with_output("area:``;"), "a.Y=8 g.Y=2",
         "2: cell a: expected a number as the area instead of ''"},
        {with_output("pin(){direction:output;}"), "a.Y=8 g.Y=2",
         "2: cell a: expected a name in the parentheses of pin"},
        {with_output("pin(C){direction:up;}"), "a.Y=8 g.Y=2",
         "2: cell a: pin C: expected a direction instead of 'up'"},
        {with_output("pin(C){direction:input;"), "a.Y=8 g.Y=2",
         "2: cell a: pin C: expected '}' before the next pin, for the group of line 2"},
        {with_output("timing(){x:1;"), "g.Y=2",
         "3: cell a: expected '}' before the next cell, for the group of line 1"},
        {with_output("pin(C){timing(){x:1;}"), "a.Y=8 g.Y=2",
         "2: cell a: pin C: expected '}' before the next pin, for the group of line 2"},
        {with_output("bus(D){direction:input;"), "g.Y=2",
         "3: cell a: expected '}' before the next cell, for the group of line 1"},
        {with_output("members("), "g.Y=2", "2: cell a: expected ')' before '{'"},
        {in_output("function:`A +`;"), "g.Y=2",
         "2: cell a: output Y: expected a pin, 0, 1, '!' or '(' instead of the end of the text"},
        {in_output("function:`(A`;"), "g.Y=2", "2: cell a: output Y: expected ')' before the end"},
        {in_output("function:`A)`;"), "g.Y=2", "2: cell a: output Y: ')' without '('"},
        {in_output("function:`A ? B`;"), "g.Y=2",
         "2: cell a: output Y: expected an operator instead of '?'"},
        {in_output("function:`A \\`B`;"), "g.Y=2", "2: cell a: output Y: string without an end"},
        {in_output("function:`2`;"), "g.Y=2",
         "2: cell a: output Y: expected a pin, 0, 1, '!' or '(' instead of '2'"},
        {in_output("function:`C`;"), "g.Y=2", "2: cell a: output Y: 'C' is no pin of the cell"},
        {in_output("function:C[1];"), "g.Y=2", "2: cell a: output Y: 'C[1]' is no pin of the cell"},
        {in_output("function:`A`B;"), "a.Y=2 g.Y=2",
         "2: cell a: pin Y: expected ':' or '(' after 'B'"},
        {in_output("function:`A`;three_state:`(`;"), "g.Y=2",
         "2: cell a: output Y: expected a pin, 0, 1, '!' or '(' instead of the end of the text"},
        {in_output("function:`A`;three_state:`C`;"), "g.Y=2",
         "2: cell a: output Y: 'C' is no pin of the cell"},
        {in_output("function:`A;\n"), "g.Y=2", "2: cell a: pin Y: string without an end"},
        {in_output("function:`\\`\\` A`;"), "g.Y=2",
         "2: cell a: output Y: expected the name of a pin between the quotation marks"},
        {in_output("function:`''`;"), "g.Y=2",
         "2: cell a: output Y: expected a pin, 0, 1, '!' or '(' instead of '''"},
        {in_output("function:`\xc3\xa9`;"), "g.Y=2",
         "2: cell a: output Y: expected a pin, 0, 1, '!' or '(' instead of '\\xC3'"},
    });
}

TEST(liberty, is_read_as_files_have_it)
{
    check({
        {with_output("/* c */area:1.5;// c\n"), "a.Y=8/1.5 g.Y=2", ""},
        {with_output("area : 2 * ( 1 +\n -0.25 ) / 3;"), "a.Y=8/0.5 g.Y=2", ""},
        {with_output("area:` 3.5 `;"), "a.Y=8/3.5 g.Y=2", ""},
        {with_output("area:`1e1`x:2;"), "a.Y=8/10 g.Y=2", ""},
        {with_output("area:+1 x:2\n"), "a.Y=8/1 g.Y=2", ""},
        {with_output("area:1\ny(z){a:1;b(1);c(){}};;"), "a.Y=8/1 g.Y=2", ""},
        {with_output("area : 1 \\ \n ; d(e,f,g);x = 3;"), "a.Y=8/1 g.Y=2", ""},
        {in_output("function:`A & B | !A`;"), "a.Y=D g.Y=2", ""},
        {in_output("function:A B;"), "a.Y=8 g.Y=2", ""},
        {in_output("function:(A + B)';"), "a.Y=1 g.Y=2", ""},
        {in_output("function:`A ^ B * A`;"), "a.Y=2 g.Y=2", ""},
        {in_output("function:`A * B ^ A`;"), "a.Y=2 g.Y=2", ""},
        {in_output("function:`A' ^ \\`B\\``;"), "a.Y=9 g.Y=2", ""},
        {in_output("function:`A \\\n B`;"), "a.Y=8 g.Y=2", ""},
        {in_output("function:`A \\ \n B`;"), "a.Y=8 g.Y=2", ""},
        {in_output("function:`A\nB`;"), "a.Y=8 g.Y=2", ""},
        {in_output("function:`(A)(B)'`;"), "a.Y=2 g.Y=2", ""},
        {in_output("function:`1`;"), "a.Y=3 g.Y=2", ""},
        {in_output("function:`A` three_state:`B`"), "a.Y=2 g.Y=2", ""},
        {in_output("function:``;"), "g.Y=2", ""},
        {in_cell("pin(Y,Z){direction:output;function:`A`;}"), "a.Y=2 a.Z=2 g.Y=2", ""},
        {in_cell("pin(Y){direction:inout;function:`A B`;}"), "a.Y=8 g.Y=2", ""},
        {in_cell("pin(Y){function:`A B`;}"), "a.Y=8 g.Y=2", ""},
        {in_cell("pin(Y){direction:output;state_function:`A`;}"), "g.Y=2", ""},
        {in_cell("pin(I){direction:internal;function:`A`;}pin(Y){direction:output;function:`I`;}"),
         "g.Y=2", ""},
        {in_cell("pin(Z){direction:output;function:`A`;}pin(Y){direction:output;function:`Z`;}"),
         "a.Z=2 g.Y=2", ""},
        {in_cell("bus(C){direction:input;}pin(Y){direction:output;function:`C[0] C[1]`;}"),
         "a.Y=8 g.Y=2", ""},
        {in_cell("bundle(C){members(D,`E, F`);direction:input;}pin(Y){direction:output;function:`D "
                 "E F`;}"),
         "a.Y=80 g.Y=2", ""},
        {in_cell("bus(C){direction:output;function:`A`;}"), "g.Y=2", ""},
        {in_cell("bus(C){pin(C[0]){direction:output;function:`A`;}}"), "g.Y=2", ""},
        {in_cell("ff(IQ,IQN){next_state:`A`;}pin(Y){direction:output;function:`IQ`;}"), "g.Y=2",
         ""},
        {in_cell(
             "statetable(`A B`,`IQ`){table:`L L : - : H`;}pin(Y){direction:output;function:`IQ`;}"),
         "g.Y=2", ""},
        {in_cell("test_cell(){pin(Q){direction:output;function:`A`;}}"), "g.Y=2", ""},
        {"scaled_cell(a,x){pin(Y){direction:output;function:`1`;}}", "g.Y=2", ""},
        {"define(a,cell,float);define_group(x,cell);x:`\xe9\\\n`; y(`a\\\\`, \\\n `b`);", "g.Y=2",
         ""},
        {"\xef\xbb\xbf/* c */library(`l`){$};", "g.Y=2", ""},
        {"library(l)\n{$}library(m){}", "g.Y=2", ""},
    });
}

} // namespace
