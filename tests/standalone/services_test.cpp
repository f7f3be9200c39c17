#include "host_recorder.h"
#include "ut_fastmem.h"
#include "ut_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

TEST(pool, blocks_are_aligned_disjoint_and_used_again)
{
    for (const std::size_t size : {1U, 8U, 24U, 40U}) {
        UT_FASTMEM pool(size, 500);
        std::set<unsigned char*> blocks;
        for (int i = 0; i < 2000; ++i) {
            auto* block = static_cast<unsigned char*>(pool.getnewptr());
            std::memset(block, i & 0xFF, size);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(void*), 0U);
            const auto [place, fresh] = blocks.insert(block);
            ASSERT_TRUE(fresh);
            ASSERT_TRUE(place == blocks.begin() || *std::prev(place) + size <= block);
        }
        for (unsigned char* block : blocks) {
            pool.free(block);
        }
        EXPECT_EQ(blocks.count(static_cast<unsigned char*>(pool.getnewptr())), 1U);
    }
}

TEST(services, the_executables_status_sink_wins)
{
    ut_status(neoform("%d:%d", 4, 11));
    EXPECT_EQ(host_recorder::take_statuses(), std::vector<std::string>{"4:11"});
}
