// Different truth tables on different threads at once; of use under ThreadSanitizer above all.

#include "basbdtt.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace {

/// Everything that a table can do, on tables of one's own.
void work(int thread)
{
    for (int round = 0; round < 50; ++round) {
        const int width = 4 + (round + thread) % 7;
        BOOL_TRUTH_TABLE table;
        table.set_value_from_internal_equation(width, "F0=B0*~B1@(B2+~B3)");
        BOOL_TRUTH_TABLE copy;
        copy.set_value_from_hex_string(width, table.value.get_hex_string());
        copy.set_value_from_internal_equation(width, copy.get_internal_equation());
        copy.set_value_from_external_equation(width, copy.get_external_equation());
        copy.rotate_inputs(0, width - 1);
        copy.rotate_inputs(width - 1, 0);
        copy.invert_input(0);
        EXPECT_TRUE(copy.get_false_factor_for_input(0).value ==
                    table.get_true_factor_for_input(0).value);
    }
}

TEST(threads, work_on_tables_of_their_own)
{
    std::array<std::thread, 4> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.at(static_cast<std::size_t>(thread)) = std::thread(work, thread);
    }
    for (std::thread& each : threads) {
        each.join();
    }
}

} // namespace
