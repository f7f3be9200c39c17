/// The table of variable names. Every case needs a process of its own.
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

using tree_oracle::parse_shape;

namespace {

const char* texts[] = {"n0", "n1",  "n2",  "n3",  "n4",  "n5",  "n6",  "n7",  "n8",
                       "n9", "n10", "n11", "n12", "n13", "n14", "n15", "n16", "n17"};

constexpr char all_leaves[] =
    "OR(s0:A,OR(s0:B,OR(s0:C,OR(s0:D,OR(s0:E,OR(s0:F,OR(s0:G,OR(s0:I,OR(s0:J,OR(s0:K,OR(s0:L,"
    "OR(s0:M,OR(s0:N,OR(s0:O,OR(s0:P,OR(s0:X,s0:Y))))))))))))))))";

/// The text and the list of names, one after the other.
std::string text_of(const char* shape)
{
    BOOL_FUNC function;
    function.root = parse_shape(shape);
    function.nsuppt = function.countsuppt();
    const std::unique_ptr<char[]> text(function.writeeqn());
    char names[200] = "F";
    function.catvars(names);
    return std::string(text.get()) + " " + names;
}

} // namespace

// The request that a mapper makes most.
TEST(names, default_list)
{
    BOOL_FUNC function(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    TECHMAP_SIG* const s = tree_oracle::signal(0);
    TECHMAP_SIG* const t = tree_oracle::signal(1);
    function.addsigtofunc(s, 0);
    function.addsigtofunc(t, 0);
    function.setvarname(s, BOOL_VAR_A);
    function.setvarname(t, BOOL_VAR_B);
    EXPECT_EQ(tree_oracle::shape(function.root), "AND(s0:A,s1:B)");
    EXPECT_EQ(function.nsuppt, 2);
    const std::unique_ptr<char[]> text(function.writeeqn());
    EXPECT_STREQ(text.get(), "A*B");
    const BOOL_FUNC later(texts, BOOL_VAR_QY);
    EXPECT_EQ(text_of(all_leaves), "A+B+C+D+E+F+G+I+J+K+L+M+N+O+P+QX+QY "
                                   "F:A:B:C:D:E:F:G:I:J:K:L:M:N:O:P:QX:QY");
}

TEST(names, first_list_wins)
{
    std::string own = "mine";
    const char* list[] = {own.c_str()};
    const BOOL_FUNC first(list, BOOL_VAR_A);
    own = "gone"; // the table has its own copy
    const BOOL_FUNC second(BOOL_FUNC_OR, texts, BOOL_VAR_QY);
    EXPECT_EQ(text_of("s0:A"), "mine F:mine");
}

TEST(names, one_name)
{
    const BOOL_FUNC function(texts, BOOL_VAR_A);
    EXPECT_EQ(text_of("OR(s0:A,s1:B)"), "n0+ F:n0");
    EXPECT_EQ(host_recorder::take_report_lines(), std::vector<int>{436});
}

TEST(names, too_many_names)
{
    const BOOL_FUNC function(texts, static_cast<BOOL_VARNAME>(0xFFFF));
    EXPECT_EQ(text_of("OR(s0:A,s1:Y)"), "n0+n16 F:n0:n16");
}

TEST(names, no_list)
{
    EXPECT_EQ(text_of("AND(s0:Y,~1)"), "QY*~1 F:QY");
    const BOOL_FUNC function(texts, BOOL_VAR_QY); // writing has not fixed the table
    EXPECT_EQ(text_of("s0:Y"), "n16 F:n16");
}

TEST(names, hole)
{
    const std::string long_name(5000, 'x');
    const char* list[] = {nullptr, long_name.c_str()};
    const BOOL_FUNC function(list, BOOL_VAR_B);
    BOOL_FUNC written;
    written.root = parse_shape("AND(s0:A,~OR(s1,s1:B))");
    const std::unique_ptr<char[]> text(written.writeeqn());
    EXPECT_EQ(text.get(), "*~(+" + long_name + ")");
    EXPECT_EQ(host_recorder::take_report_lines(), (std::vector<int>{436, 441}));
}
