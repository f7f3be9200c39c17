/// @file
/// @brief Runs operations under every way in which memory can run out.
#pragma once

#include "failing_heap.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>

/// An operation of a subject, which has `std::string describe()`.
template <class subject_type>
using operation = void (*)(subject_type&);

/// @brief Fails the allocations 1, 2, ... of each operation on a new subject until it has no more:
/// that one, then it and all that follow. Of very many it leaves some out.
///
/// Nothing but std::bad_alloc comes out, nothing leaks, the subject is as it was, and the operation
/// done again gives what it always gives.
/// @param args  what a subject is made from
template <class subject_type, std::size_t count, class... arguments>
void exhaust(const operation<subject_type> (&operations)[count], arguments... args)
{
    long failures = 0;
    for (std::size_t i = 0; i < count; ++i) {
        std::string expected;
        const auto attempt = [&](long first, long last) {
            subject_type subject(args...);
            const std::string before = subject.describe();
            bool is_done = true;
            failing_heap::arm(first, last);
            try {
                operations[i](subject);
            } catch (const std::bad_alloc&) {
                is_done = false;
            }
            const long failed = failing_heap::disarm();
            if (!is_done) {
                EXPECT_TRUE(subject.describe() == before);
                operations[i](subject);
            }
            expected = first == 0 ? subject.describe() : expected;
            EXPECT_TRUE(subject.describe() == expected);
            return failed;
        };
        attempt(0, 0);
        long failed = 1;
        for (long at = 1; failed > 0 && !testing::Test::HasFailure(); at += 1 + at / 50) {
            SCOPED_TRACE("operation " + std::to_string(i) + ", allocation " + std::to_string(at));
            const long live_before = failing_heap::live_blocks();
            failed = attempt(at, at) + attempt(at, LONG_MAX);
            EXPECT_EQ(failing_heap::live_blocks(), live_before) << "leak";
            failures += failed;
        }
    }
    EXPECT_GT(failures, 0);
}
