#include "dot.h"
#include "representations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace cellfn;

namespace {

/// The lines of a graph behind its first one, each followed by "|".
template <class Write>
std::string lines(Write write)
{
    std::ostringstream out;
    write(out);
    std::string text = out.str();
    std::replace(text.begin(), text.end(), '\n', '|');
    return text.substr(text.find('|') + 1);
}

TEST(dot, complements_and_ranks)
{
    const std::string statement = "!(a*!b);";
    scanner source(statement);
    representations all(read_expression(source));
    EXPECT_EQ(lines([&](std::ostream& out) { write_tree_graph(out, all.tree.function); }),
              "  f [label=\"f\", shape=plaintext];|"
              "  n0 [label=\"AND\", shape=ellipse];|"
              "  f -> n0 [style=dashed, arrowhead=dot];|"
              "  n1 [label=\"a\", shape=box];|"
              "  n0 -> n1 [style=solid];|"
              "  n2 [label=\"b\", shape=box];|"
              "  n0 -> n2 [style=dashed, arrowhead=dot];|}|");
    EXPECT_EQ(lines([&](std::ostream& out) { write_bdd_graph(out, all.bdd); }),
              "  f [label=\"f\", shape=plaintext];|"
              "  one [label=\"1\", shape=box];|"
              "  { rank=same; n0; }|"
              "  n0 [label=\"a\", shape=circle];|"
              "  { rank=same; n1; }|"
              "  n1 [label=\"b\", shape=circle];|"
              "  f -> n0 [style=solid];|"
              "  n0 -> n1 [style=solid, label=\"1\"];|"
              "  n0 -> one [style=solid, label=\"0\"];|"
              "  n1 -> one [style=solid, label=\"1\"];|"
              "  n1 -> one [style=dashed, arrowhead=dot, label=\"0\"];|}|");
    all.bdd.setbdd(basbdd_zero);
    EXPECT_NE(lines([&](std::ostream& out) {
                  write_bdd_graph(out, all.bdd);
              }).find("  f -> one [style=dashed, arrowhead=dot];|}|"),
              std::string::npos);
}

} // namespace
