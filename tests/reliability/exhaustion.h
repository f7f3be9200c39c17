/// @file
/// @brief Runs an operation under every way in which memory can run out.
#pragma once

#include "failing_heap.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace exhaustion {

/// One operation of a subject, which has `std::string describe()` and a default constructor.
template <typename SUBJECT>
struct OPERATION {
    const char* name;
    void (*run)(SUBJECT& subject);
    bool may_have_begun = false; ///< what ran out of memory may have changed its object
};

/// An operation of the subject `s`, named by its text.
// clang-format off
#define OPERATION_OF(SUBJECT, ...) {#__VA_ARGS__, []([[maybe_unused]] SUBJECT& s) { __VA_ARGS__; }}
// clang-format on

/// Fails the allocation 1, 2, ... of the operation until it has no more: that one, then it and all
/// that follow. Nothing but std::bad_alloc comes out, nothing leaks, the object is as it was, and
/// the operation done again gives what it always gives.
/// @param sparse  for large operations: leaves out most allocations
template <typename SUBJECT>
void exhaust(const OPERATION<SUBJECT>& operation, bool sparse = false)
{
    SCOPED_TRACE(operation.name);
    const std::string expected = [&] {
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
                failing_heap::arm(at, mode);
                try {
                    operation.run(subject);
                    failed = failing_heap::disarm() != 0;
                } catch (const std::bad_alloc&) {
                    ASSERT_NE(failing_heap::disarm(), 0);
                    ASSERT_TRUE(operation.may_have_begun || subject.describe() == before) << at;
                    operation.run(subject);
                }
                ASSERT_EQ(subject.describe(), expected) << "allocation " << at;
            }
            ASSERT_EQ(failing_heap::live_blocks(), live_before) << "leak, allocation " << at;
        }
    }
    testing::Test::RecordProperty("failures", std::to_string(failing_heap::failures()));
}

} // namespace exhaustion
