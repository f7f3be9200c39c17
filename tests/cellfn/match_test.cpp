#include "basbdcells/matcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <variant>

using namespace basbdcells;

namespace {

BOOL_TRUTH_TABLE from_hex(int width, const std::string& digits)
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_hex_string(width, digits);
    return table;
}

/// Complements of the best binding, -1 without one.
int complements(const BOOL_TRUTH_TABLE& cell, const BOOL_TRUTH_TABLE& target, inverters use)
{
    const auto best = matcher(function_set({target}), use).best(function_set({cell}));
    return best ? best->complements() : -1;
}

TEST(match, every_shuffled_cell_of_the_shipped_library_is_found)
{
    std::mt19937 random(7); // fixed
    const library source = read_library_file(CELLFN_LIBRARY);
    for (const cell& each : source.cells) {
        const BOOL_TRUTH_TABLE function = table_of(each.outputs.front().function);
        for (int round = 0; round < 20; ++round) {
            BOOL_TRUTH_TABLE shuffled = function;
            std::vector<int> places(static_cast<std::size_t>(function.get_width()));
            std::iota(places.begin(), places.end(), 0);
            std::shuffle(places.begin(), places.end(), random);
            shuffled.rotate_inputs(places.data());
            EXPECT_EQ(complements(function, shuffled, inverters::none), 0) << each.name;
            int inverted = 0;
            for (int i = 0; i < function.get_width(); ++i) {
                if (random() % 2 == 1) {
                    shuffled.invert_input(i);
                    ++inverted;
                }
            }
            const int found = complements(function, shuffled, inverters::allowed);
            EXPECT_TRUE(found >= 0 && found <= inverted) << each.name;
        }
    }
}

/// All pairs of functions of three inputs against all ways to bind them, tried one by one.
TEST(match, agrees_with_trying_everything)
{
    for (unsigned seed = 1; seed < 256; seed += 5) {
        BOOL_TRUTH_TABLE cell = from_hex(3, "00");
        cell.value.words[0] = seed;
        const function_set source({cell});
        std::vector<std::vector<int>> expected(256, std::vector<int>(5)); // by complements
        std::vector<int> places{0, 1, 2};
        do {
            for (unsigned marks = 0; marks < 16; ++marks) {
                BOOL_TRUTH_TABLE bound = cell;
                int count = 0;
                for (unsigned i = 0; i < 4; ++i) {
                    if ((marks >> i & 1U) != 0) {
                        i < 3 ? bound.invert_input(static_cast<int>(i))
                              : void(bound.value ^= TRUTH_TABLE_VAL(3, 1));
                        ++count;
                    }
                }
                bound.rotate_inputs(places.data());
                ++expected[bound.value.words[0]][static_cast<std::size_t>(count)];
            }
        } while (std::next_permutation(places.begin(), places.end()));
        for (unsigned other = 0; other < 256 && source.support().size() == 3; ++other) {
            BOOL_TRUTH_TABLE target = cell;
            target.value.words[0] = other;
            const auto& counts = expected[other];
            const auto fewest =
                std::find_if(counts.begin(), counts.end(), [](int n) { return n > 0; });
            const int best =
                fewest == counts.end() ? -1 : static_cast<int>(fewest - counts.begin());
            EXPECT_EQ(complements(cell, target, inverters::allowed), best) << seed << ' ' << other;
            EXPECT_EQ(complements(cell, target, inverters::none), best == 0 ? 0 : -1);
            const matcher search(function_set({target}), inverters::allowed);
            for (int count = 0; count < 5; ++count) {
                int found = 0;
                search.for_each(source, count, [&](const binding&) { ++found; });
                EXPECT_EQ(found, counts[static_cast<std::size_t>(count)]) << seed << ' ' << other;
            }
        }
    }
}

TEST(match, inputs_without_effect_are_dropped)
{
    EXPECT_EQ(complements(from_hex(2, "8"), from_hex(4, "C0C0"), inverters::none), 0);
    EXPECT_EQ(complements(from_hex(1, "0"), from_hex(5, "00000000"), inverters::none), 0);
    EXPECT_EQ(complements(from_hex(1, "3"), from_hex(2, "0"), inverters::allowed), 1);
    EXPECT_EQ(complements(from_hex(1, "3"), from_hex(2, "0"), inverters::none), -1);
}

/// A constant has no input, and yet its table has one.
TEST(match, constants_share_no_inputs)
{
    const auto shared = share_inputs({std::get<function>(read_function("CONST1")),
                                      std::get<function>(read_function("!CONST1"))});
    EXPECT_TRUE(shared.inputs.empty());
    ASSERT_EQ(shared.tables.size(), 2U);
    EXPECT_EQ(shared.tables.front().value.get_hex_string(), "3");
    EXPECT_EQ(shared.tables.back().value.get_hex_string(), "0");
}

} // namespace
