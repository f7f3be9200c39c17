// This program defines some services itself while the stand-in is loaded too: its own ones win, one
// by one, also for the calls that the library makes while it is loaded.
// usage: test_own_services OFFSET...   of each `bd_dynamic` in the library

#include "basbdbool.h"
#include "basbdtt.h"
#include "bd_dynamic_ld.h"
#include "counting_pool.h"
#include "host_recorder.h"

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

std::int64_t BD_DYNAMIC_LD::dynamic_id = 20261122;

namespace {

std::vector<std::string> offsets;

Dl_info home_of(const char* symbol)
{
    Dl_info info{};
    EXPECT_NE(dladdr(dlsym(RTLD_DEFAULT, symbol), &info), 0) << symbol;
    return info;
}

TEST(own_services, make_the_pool_at_load)
{
    EXPECT_EQ(counting_pool::made_with().block, sizeof(BOOL_TNODE));
    EXPECT_EQ(counting_pool::made_with().blocks_per_chunk, 500U);
    BOOL_TNODE::operator delete(nullptr);
    EXPECT_EQ(counting_pool::live(), 0) << "null is no block";
}

TEST(own_services, win_one_by_one)
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_internal_equation(2, "B0-B1");
    EXPECT_EQ(host_recorder::take_statuses().at(0), "Unexpected equation element '-'");
    const std::string home_of_others = home_of("_Z7neoformPKcz").dli_fname;
    EXPECT_NE(home_of_others.find("libbasbdhost"), std::string::npos) << home_of_others;
}

TEST(own_services, lend_the_load_identifier)
{
    const Dl_info library = home_of("_ZN10BOOL_TNODE7reclaimEv");
    EXPECT_EQ(offsets.size(), 3U) << "three units copy it";
    for (const std::string& each : offsets) {
        const char* copy =
            static_cast<const char*>(library.dli_fbase) + std::stoul(each, nullptr, 16);
        EXPECT_EQ(*reinterpret_cast<const std::int64_t*>(copy), 20261122);
    }
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    offsets.assign(argv + 1, argv + argc);
    return RUN_ALL_TESTS();
}
