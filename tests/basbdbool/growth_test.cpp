/// The sizes of the buffers that an equation is written into.
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

std::vector<std::size_t> array_sizes;

} // namespace

void* operator new[](std::size_t size)
{
    array_sizes.push_back(size);
    return ::operator new(size);
}
void operator delete[](void* block) noexcept { ::operator delete(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { ::operator delete(block); }

TEST(growth, doubles_sixteen_bytes_before_the_end)
{
    using SIZES = std::vector<std::size_t>;
    for (const auto& [leaves, sizes] : std::vector<std::pair<int, SIZES>>{
             {120, {256}}, {121, {256, 512}}, {248, {256, 512}}, {249, {256, 512, 1024}}}) {
        BOOL_FUNC function(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A);
        for (int i = 0; i < leaves; ++i) {
            function.addsigtofunc(tree_oracle::signal(0), 0);
        }
        function.setvarname(tree_oracle::signal(0), BOOL_VAR_A);
        array_sizes.clear();
        const std::unique_ptr<char[]> text(function.writeeqn());
        EXPECT_EQ(array_sizes, sizes) << leaves;
    }
}
