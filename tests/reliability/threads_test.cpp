// Different truth tables on different threads at once; of use under ThreadSanitizer above all.

#include "basbdtt.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

namespace {

/// Everything that a table can do, on tables of one's own. @return the rounds that went wrong
int work(unsigned seed)
{
    std::mt19937 random(seed);
    int wrong = 0;
    for (int round = 0; round < 50; ++round) {
        const int width = static_cast<int>(2 + random() % 9);
        const int input = static_cast<int>(random() % static_cast<unsigned>(width));
        BOOL_TRUTH_TABLE table;
        table.set_identity_for_input(width, input);
        for (std::uint32_t& word : table.value.words) {
            word ^= static_cast<std::uint32_t>(random());
        }
        table.set_value(width, table.value);
        const TRUTH_TABLE_VAL before = table.value;

        BOOL_TRUTH_TABLE copy;
        copy.set_value_from_hex_string(width, table.value.get_hex_string());
        copy.set_value_from_internal_equation(width, copy.get_internal_equation());
        copy.set_value_from_external_equation(width, copy.get_external_equation());
        copy.invert_input(input);
        copy.rotate_inputs(input, 0);
        const bool cofactors_agree = copy.get_false_factor_for_input(0).value ==
                                     table.get_true_factor_for_input(input).value;
        copy.rotate_inputs(0, input);
        copy.invert_input(input);
        wrong += copy.value == before && (cofactors_agree || input != 0) ? 0 : 1;
    }
    return wrong;
}

TEST(threads, work_on_tables_of_their_own)
{
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        threads.emplace_back([&wrong, seed] { wrong += work(seed); });
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
