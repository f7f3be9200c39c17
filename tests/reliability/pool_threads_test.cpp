// The stand-in's pool on several threads at once.

#include "basbdbool.h"
#include "ut_fastmem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace {

/// As large as a node; while someone has it, it is filled with a value of his.
using block = std::array<std::size_t, 3>;
using block_list = std::vector<block*>;

block_list take(UT_FASTMEM& pool, std::size_t count, std::size_t value)
{
    block_list blocks(count);
    for (block*& each : blocks) {
        each = ::new (pool.getnewptr()) block{value, value, value};
    }
    return blocks;
}

void give_back(UT_FASTMEM& pool, const block_list& blocks, std::size_t value)
{
    for (block* each : blocks) {
        EXPECT_EQ(*each, (block{value, value, value}));
        pool.free(each);
    }
}

/// The one that threads have lists of, as it was made first, and one that they lock.
class pool_on_threads : public testing::TestWithParam<bool> {
protected:
    UT_FASTMEM other{sizeof(block), 500};
    UT_FASTMEM& pool = GetParam() ? *BOOL_TNODE::fstmem : other;
    std::set<block*> places;
};

TEST_P(pool_on_threads, has_the_blocks_of_threads_that_ended)
{
    for (std::size_t round = 0; round < 100; ++round) {
        block_list blocks;
        std::thread([&] {
            static thread_local BOOL_FUNC freed_at_the_end(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
            blocks = take(pool, 1000, round);
            give_back(pool, take(pool, 1000, round), round);
            freed_at_the_end.setlogic1();
        }).join();
        places.insert(blocks.begin(), blocks.end());
        give_back(pool, blocks, round);
    }
    EXPECT_LE(places.size(), 12000U); // of 100,000 that were taken
}

TEST_P(pool_on_threads, has_the_blocks_that_another_thread_gives_back)
{
    constexpr std::size_t rounds = 1000;
    std::mutex lock;
    std::condition_variable passed_on;
    block_list passed;
    std::thread consumer([&] {
        for (std::size_t round = 0; round < rounds; ++round) {
            std::unique_lock guard(lock);
            passed_on.wait(guard, [&] { return !passed.empty(); });
            give_back(pool, std::exchange(passed, {}), round);
            passed_on.notify_one();
            guard.unlock();
            give_back(pool, take(pool, 600, round), round); // more than what it keeps of a list
        }
    });
    for (std::size_t round = 0; round < rounds; ++round) {
        const block_list blocks = take(pool, 100, round);
        places.insert(blocks.begin(), blocks.end());
        std::unique_lock guard(lock);
        passed_on.wait(guard, [&] { return passed.empty(); });
        passed = blocks;
        passed_on.notify_one();
    }
    consumer.join();
    EXPECT_LE(places.size(), 20000U); // of 100,000 that were taken
}

INSTANTIATE_TEST_SUITE_P(each, pool_on_threads, testing::Bool());

} // namespace
