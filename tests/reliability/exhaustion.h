/// @file
/// @brief Runs an operation under every way in which memory can run out.
#pragma once

#include "failing_heap.h"
#include "quiet_host.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace exhaustion {

/// What an operation that ran out of memory may have done to its object. In either case the object
/// can be used and destroyed, and the operation done again gives what it always gives.
enum class AFTER {
    UNCHANGED, ///< nothing
    BEGUN      ///< part of its work, as documented
};

/// One operation of a subject, which has `std::string describe()` and a default constructor.
template <typename SUBJECT>
struct OPERATION {
    const char* name;
    void (*run)(SUBJECT& subject);
    AFTER after = AFTER::UNCHANGED;
};

/// Whether `run` came to its end while the given allocation failed. @param failed  any did
template <typename SUBJECT>
bool completes(const OPERATION<SUBJECT>& operation, SUBJECT& subject, long at,
               failing_heap::FAIL mode, bool& failed)
{
    bool completed = true;
    failing_heap::arm(at, mode);
    try {
        operation.run(subject);
    } catch (const std::bad_alloc&) {
        completed = false;
    }
    failed = failing_heap::disarm() != 0;
    EXPECT_TRUE(completed || failed) << "std::bad_alloc though no allocation failed";
    return completed;
}

/// Fails the allocation 1, 2, ... of the operation until it has no more: that one, then it and all
/// that follow. Large operations are too slow for that: `sparse` leaves most of them out.
template <typename SUBJECT>
void exhaust(const OPERATION<SUBJECT>& operation, bool sparse = false)
{
    SCOPED_TRACE(operation.name);
    const auto result = [&] {
        SUBJECT subject;
        operation.run(subject);
        return subject.describe();
    }();
    for (const auto mode : {failing_heap::FAIL::ONCE, failing_heap::FAIL::FROM_THERE}) {
        bool failed = true;
        for (long at = 1; failed; at += sparse ? 1 + at / 2 : 1) {
            const long live_before = failing_heap::live_blocks();
            {
                SUBJECT subject;
                const std::string before = subject.describe();
                if (!completes(operation, subject, at, mode, failed)) {
                    if (operation.after == AFTER::UNCHANGED) {
                        ASSERT_EQ(subject.describe(), before) << "allocation " << at;
                    }
                    operation.run(subject);
                }
                ASSERT_EQ(subject.describe(), result) << "allocation " << at;
            }
            ASSERT_EQ(failing_heap::live_blocks(), live_before) << "leak, allocation " << at;
        }
    }
    quiet_host::take_statuses();
    quiet_host::take_reports();
    testing::Test::RecordProperty("allocations_failed_so_far",
                                  std::to_string(failing_heap::failures()));
}

} // namespace exhaustion
