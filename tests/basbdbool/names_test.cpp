/// Names and texts of functions. The first list of names counts for good, so every case needs a
/// process of its own.
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

std::size_t last_array_size = 0;

const char* texts[] = {"n0", "n1",  "n2",  "n3",  "n4",  "n5",  "n6",  "n7",  "n8",
                       "n9", "n10", "n11", "n12", "n13", "n14", "n15", "n16", "n17"};

constexpr char all_names[] = "+(aA,+(aB,+(aC,+(aD,+(aE,+(aF,+(aG,+(aI,+(aJ,+(aK,+(aL,+(aM,+(aN,"
                             "+(aO,+(aP,+(aX,aY))))))))))))))))";

/// The text and the list of names, one after the other.
std::string text_of(const char* shape)
{
    tree_oracle::parsed_func function(shape);
    const std::unique_ptr<char[]> text(function.writeeqn());
    char names[200] = "F";
    function.catvars(names);
    return std::string(text.get()) + " " + names;
}

} // namespace

void* operator new[](std::size_t size)
{
    last_array_size = size;
    return ::operator new(size);
}
void operator delete[](void* block) noexcept { ::operator delete(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { ::operator delete(block); }

TEST(names, default_list)
{
    const BOOL_FUNC first(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    const BOOL_FUNC later(texts, BOOL_VAR_QY);
    EXPECT_EQ(text_of(all_names), "A+B+C+D+E+F+G+I+J+K+L+M+N+O+P+QX+QY "
                                  "F:A:B:C:D:E:F:G:I:J:K:L:M:N:O:P:QX:QY");
}

TEST(names, first_list_wins)
{
    std::string own = "mine";
    const char* list[] = {own.c_str()};
    const BOOL_FUNC first(list, static_cast<BOOL_VARNAME>(0x10000)); // 16 bits count: one name
    own = "gone";                                                    // the table has its own copy
    const BOOL_FUNC second(BOOL_FUNC_OR, texts, BOOL_VAR_QY);
    EXPECT_EQ(text_of("+(aA,bB)"), "mine+ F:mine");
    EXPECT_EQ(host_recorder::take_report_lines(), std::vector<int>{436});
}

TEST(names, too_many_names)
{
    const BOOL_FUNC function(texts, static_cast<BOOL_VARNAME>(0xFFFF));
    EXPECT_EQ(text_of("+(aA,bY)"), "n0+n16 F:n0:n16");
}

TEST(names, no_list)
{
    EXPECT_EQ(text_of("*(aY,~1)"), "QY*~1 F:QY");
    EXPECT_EQ(text_of("~@(~*(aA,~0),~+(-,bB))"), "~(~(A*~0)@~(0)) F:A:B");
    EXPECT_EQ(text_of("+(+(aA,bB),+(cC,~+(aD,-)))"), "(A+B)+C+~(D) F:A:B:C:D");
    const BOOL_FUNC function(texts, BOOL_VAR_QY); // writing has not fixed the table
    EXPECT_EQ(text_of("aY"), "n16 F:n16");
}

TEST(names, hole)
{
    const std::string long_name(5000, 'x');
    const char* list[] = {nullptr, long_name.c_str()};
    const BOOL_FUNC function(list, BOOL_VAR_B);
    tree_oracle::parsed_func written("*(aA,~+(b,bB))");
    const std::unique_ptr<char[]> text(written.writeeqn());
    EXPECT_EQ(text.get(), "*~(+" + long_name + ")");
    EXPECT_EQ(host_recorder::take_report_lines(), (std::vector<int>{436, 441}));
}

TEST(names, buffer_doubles_sixteen_bytes_before_its_end)
{
    BOOL_FUNC function(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A);
    std::size_t size = 256;
    for (std::size_t leaves = 1; leaves < 600; ++leaves) {
        function.addsigtofunc(tree_oracle::signal(0), 0);
        function.setvarname(tree_oracle::signal(0), BOOL_VAR_A);
        const std::unique_ptr<char[]> text(function.writeeqn());
        size *= 2 * (leaves - 1) + 16 < size ? 1 : 2; // what stands before the last leaf
        ASSERT_EQ(last_array_size, size) << leaves;
    }
}
