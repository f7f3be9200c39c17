// The names of variables when memory runs out: the first function with names chooses the table for
// good, so this is a program of its own.

#include "basbdbool.h"
#include "failing_heap.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <vector>

TEST(name_table_exhaustion, is_chosen_once_it_is_complete)
{
    std::vector<const char*> names(BOOL_VAR_QY + 1, "a name in a block of its own");
    const long live_before = failing_heap::live_blocks();
    bool chosen = false;
    for (long at = 1; !chosen; ++at) {
        ASSERT_EQ(failing_heap::live_blocks(), live_before) << "allocation " << at - 1;
        failing_heap::arm(at, LONG_MAX);
        try {
            const BOOL_FUNC function(BOOL_FUNC_OR, names.data(), BOOL_VAR_QY);
            chosen = true;
        } catch (const std::bad_alloc&) {
        }
        failing_heap::disarm();
    }
    EXPECT_EQ(failing_heap::live_blocks(), live_before + BOOL_VAR_QY + 1) << "a copy of each name";
}
