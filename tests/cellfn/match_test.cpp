#include "column.h"
#include "genlib.h"
#include "matcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

using namespace cellfn;

namespace {

BOOL_TRUTH_TABLE from_hex(int width, const std::string& digits)
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_hex_string(width, digits);
    return table;
}

std::size_t count_bindings(const BOOL_TRUTH_TABLE& cell, const BOOL_TRUTH_TABLE& target,
                           match_options options)
{
    std::size_t count = 0;
    match_cell(matchable(cell), matchable(target), options, [&](const binding&) { ++count; });
    return count;
}

TEST(match, every_shuffled_cell_of_the_shipped_library_is_found)
{
    std::mt19937 random(7); // fixed
    const library source = load_library(CELLFN_LIBRARY);
    for (const cell& each : source.cells) {
        const BOOL_TRUTH_TABLE function = to_table(each.function);
        for (int round = 0; round < 20; ++round) {
            BOOL_TRUTH_TABLE shuffled = function;
            std::vector<int> places(static_cast<std::size_t>(function.get_width()));
            std::iota(places.begin(), places.end(), 0);
            std::shuffle(places.begin(), places.end(), random);
            shuffled.rotate_inputs(places.data());
            EXPECT_EQ(count_bindings(function, shuffled, {true, false}), 1U) << each.name;
            for (int i = 0; i < function.get_width(); ++i) {
                if (random() % 2 == 1) {
                    shuffled.invert_input(i);
                }
            }
            if (random() % 2 == 1) {
                complement(shuffled);
            }
            EXPECT_EQ(count_bindings(function, shuffled, {false, false}), 1U) << each.name;
        }
    }
}

/// All functions of three inputs against all ways to bind them, tried one by one.
TEST(match, agrees_with_trying_everything)
{
    const auto brute_force = [](const BOOL_TRUTH_TABLE& cell, const BOOL_TRUTH_TABLE& target,
                                bool exact) {
        std::size_t count = 0;
        std::vector<int> places{0, 1, 2};
        do {
            for (unsigned marks = 0; marks < (exact ? 1U : 16U); ++marks) {
                const binding each{(marks & 8U) != 0,
                                   places,
                                   {(marks & 1U) != 0, (marks & 2U) != 0, (marks & 4U) != 0}};
                count += holds(each, cell, target) ? 1 : 0;
            }
        } while (std::next_permutation(places.begin(), places.end()));
        return count;
    };
    for (int seed = 1; seed < 256; seed += 5) {
        for (int other = 0; other < 256; ++other) {
            BOOL_TRUTH_TABLE cell(from_hex(3, "00"));
            cell.value.words[0] = static_cast<unsigned>(seed);
            BOOL_TRUTH_TABLE target = cell;
            target.value.words[0] = static_cast<unsigned>(other);
            if (reduced_function(cell).inputs.size() < 3 ||
                reduced_function(target).inputs.size() < 3) {
                continue;
            }
            for (const bool exact : {false, true}) {
                const std::size_t expected = brute_force(cell, target, exact);
                EXPECT_EQ(count_bindings(cell, target, {exact, true}), expected)
                    << seed << ' ' << other;
                EXPECT_EQ(count_bindings(cell, target, {exact, false}), expected > 0 ? 1U : 0U);
            }
        }
    }
}

TEST(match, inputs_without_effect_are_dropped)
{
    EXPECT_EQ(count_bindings(from_hex(2, "8"), from_hex(4, "C0C0"), {true, false}), 1U);
    EXPECT_EQ(count_bindings(from_hex(1, "0"), from_hex(5, "00000000"), {true, true}), 1U);
    EXPECT_EQ(count_bindings(from_hex(1, "3"), from_hex(2, "0"), {false, true}), 1U);
    EXPECT_EQ(count_bindings(from_hex(1, "3"), from_hex(2, "0"), {true, true}), 0U);
}

} // namespace
