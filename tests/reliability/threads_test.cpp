// Different truth tables on different threads at once; of use under ThreadSanitizer above all.

#include "basbdtt.h"

#include <gtest/gtest.h>

#include <future>
#include <random>
#include <vector>

namespace {

/// Everything that a table can do, on tables of one's own. @return the rounds that go wrong
int work(unsigned seed)
{
    std::mt19937 random(seed);
    int wrong = 0;
    for (int round = 0; round < 50; ++round) {
        const int width = 2 + round % 9;
        BOOL_TRUTH_TABLE table;
        table.set_identity_for_input(width, 1);
        for (std::uint32_t& word : table.value.words) {
            word ^= static_cast<std::uint32_t>(random());
        }
        table.set_value(width, table.value);
        BOOL_TRUTH_TABLE copy;
        copy.set_value_from_hex_string(width, table.value.get_hex_string());
        copy.set_value_from_internal_equation(width, copy.get_internal_equation());
        copy.set_value_from_external_equation(width, copy.get_external_equation());
        copy.rotate_inputs(0, width - 1);
        copy.rotate_inputs(width - 1, 0);
        copy.invert_input(0);
        const TRUTH_TABLE_VAL factor = copy.get_false_factor_for_input(0).value;
        wrong += factor == table.get_true_factor_for_input(0).value ? 0 : 1;
    }
    return wrong;
}

TEST(threads, work_on_tables_of_their_own)
{
    std::vector<std::future<int>> wrong;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        wrong.push_back(std::async(std::launch::async, work, seed));
    }
    for (auto& each : wrong) {
        EXPECT_EQ(each.get(), 0);
    }
}

} // namespace
