#include "ut_fastmem.h"
#include "ut_msgman.h"
#include "ut_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>

TEST(pool, blocks_are_aligned_disjoint_and_used_again)
{
    for (const std::size_t size : {1U, 8U, 24U, 40U}) {
        UT_FASTMEM pool(size, 500);
        std::set<unsigned char*> blocks;
        for (int i = 0; i < 2000; ++i) {
            auto* block = static_cast<unsigned char*>(pool.getnewptr());
            std::memset(block, 0xFF, size);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(void*), 0U);
            const auto [place, fresh] = blocks.insert(block);
            ASSERT_TRUE(fresh && (place == blocks.begin() || *std::prev(place) + size <= block));
        }
        for (unsigned char* block : blocks) {
            pool.free(block);
        }
        EXPECT_EQ(blocks.count(static_cast<unsigned char*>(pool.getnewptr())), 1U);
    }
}

TEST(messages, are_lines_on_standard_error)
{
    testing::internal::CaptureStderr();
    ut_status(neoform("width %d", 31));
    ut_msgman->report("", cae_appname, neoform("4:%d", 11), 252, "1.0", 2, nullptr);
    ut_msgman->report(nullptr, nullptr, nullptr, 7, nullptr, 2, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "width 31\n"
                                                      "basbd: internal error 4:11, line 252, 1.0\n"
                                                      "basbd: internal error , line 7, \n");
}
