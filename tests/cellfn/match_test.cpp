#include "basbdcells/matcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <iterator>
#include <map>
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

/// What a function becomes: input i of the old one is input `places[i]` of the new one,
/// complemented when bit i of `marks` says so. The bit above those of the inputs complements the
/// function.
std::uint64_t bound(std::uint64_t column, const std::vector<unsigned>& places, unsigned marks)
{
    std::uint64_t result = 0;
    for (unsigned y = 0; y < 1U << places.size(); ++y) {
        unsigned x = marks;
        for (std::size_t i = 0; i < places.size(); ++i) {
            x ^= (y >> places[i] & 1U) << i;
        }
        const unsigned entry = x & ((1U << places.size()) - 1);
        result |= ((column >> entry ^ x >> places.size()) & 1U) << y;
    }
    return result;
}

/// A function over the inputs on which it depends.
struct reduced {
    std::uint64_t column;
    unsigned inputs;

    explicit reduced(const BOOL_TRUTH_TABLE& table)
        : column(std::stoull(table.value.get_hex_string(), nullptr, 16)),
          inputs(static_cast<unsigned>(table.width))
    {
        for (unsigned i = inputs; i-- > 0;) {
            bool depends = false;
            std::uint64_t without = 0;
            for (unsigned y = 0; y < 1U << (inputs - 1); ++y) {
                const unsigned below = y & ((1U << i) - 1);
                const unsigned low = (y - below) * 2 + below;
                const std::uint64_t bit = column >> low & 1U;
                depends |= bit != (column >> (low | 1U << i) & 1U);
                without |= bit << y;
            }
            if (!depends) {
                column = without;
                --inputs;
            }
        }
    }
};

/// The functions that one can be, and how often with each number of complements.
using bindings = std::map<std::uint64_t, std::vector<int>>;

bindings try_everything(const reduced& source)
{
    bindings all;
    std::vector<unsigned> places(source.inputs);
    std::iota(places.begin(), places.end(), 0U);
    do {
        for (unsigned marks = 0; marks < 2U << source.inputs; ++marks) {
            std::vector<int>& counts = all[bound(source.column, places, marks)];
            counts.resize(source.inputs + 2);
            ++counts[std::bitset<32>(marks).count()];
        }
    } while (std::next_permutation(places.begin(), places.end()));
    return all;
}

/// The fewest complements, or -1.
int fewest(const bindings& all, std::uint64_t column)
{
    const auto found = all.find(column);
    return found == all.end()
               ? -1
               : static_cast<int>(std::find_if(found->second.begin(), found->second.end(),
                                               [](int count) { return count > 0; }) -
                                  found->second.begin());
}

/// An output of a cell, and all that it can be.
struct tried_output {
    const cell* source;
    std::size_t number;
    reduced function;
    bindings all;
};

/// The outputs that depend on four inputs at most.
std::vector<tried_output> try_outputs(const library& source)
{
    std::vector<tried_output> outputs;
    for (const cell& each : source.cells) {
        for (std::size_t i = 0; i < each.outputs.size(); ++i) {
            if (each.outputs[i].function.pins.size() <= 4) {
                const reduced function(table_of(each.outputs[i].function));
                outputs.push_back({&each, i, function, try_everything(function)});
            }
        }
    }
    return outputs;
}

using output_key = std::pair<const cell*, std::size_t>;

/// The value of an expression of a cell's pins where the wanted function has the assignment `x`.
unsigned value_of(const expression& function, const match& found, unsigned x)
{
    const auto operand = [&](const step& each) {
        if (each.kind != step_kind::pin) {
            return each.kind == step_kind::one ? 1U : 0U;
        }
        const std::vector<std::string>& pins = found.cell.pins;
        const auto pin = std::find(pins.begin(), pins.end(), function.pins[each.pin]);
        const connection& to =
            found.connections.pins.at(static_cast<std::size_t>(pin - pins.begin()));
        return to.input == connection::tied
                   ? (to.constant ? 1U : 0U)
                   : (x >> static_cast<unsigned>(to.input) & 1U) ^ (to.inverted ? 1U : 0U);
    };
    const auto complement = [](unsigned& value) { value ^= 1U; };
    const auto combine = [](step_kind kind, unsigned& left, unsigned right) {
        left = kind == step_kind::conjunction ? left & right
               : kind == step_kind::exclusive ? left ^ right
                                              : left | right;
    };
    return evaluate(function, operand, complement, combine);
}

/// Whether a match does what is wanted on every assignment, and its output drives.
bool is_right(const match& found, const BOOL_TRUTH_TABLE& wanted)
{
    const output& drives = found.cell.source->outputs[found.cell.outputs.front()];
    const unsigned inverted = found.connections.inverted_outputs.front() ? 1U : 0U;
    for (unsigned x = 0; x < 1U << static_cast<unsigned>(wanted.width); ++x) {
        const bool is_open =
            !drives.three_state.steps.empty() && value_of(drives.three_state, found, x) != 0;
        const unsigned value = value_of(drives.function, found, x) ^ inverted;
        if (is_open || value != (wanted.value.words[0] >> x & 1U)) {
            return false;
        }
    }
    return true;
}

/// Compares the matches of one function with those that brute force finds.
void compare(const library& source, const std::vector<tried_output>& tried,
             const BOOL_TRUTH_TABLE& wanted)
{
    const reduced target(wanted);
    for (const inverters use : {inverters::allowed, inverters::none}) {
        std::map<output_key, int> expected; // complements
        for (const tried_output& each : tried) {
            const int least =
                each.function.inputs == target.inputs ? fewest(each.all, target.column) : -1;
            if (least >= 0 && (use == inverters::allowed || least == 0)) {
                expected[{each.source, each.number}] = least;
            }
        }
        std::map<output_key, int> found;
        for (const match& each : find_matches(source.cells, function_set({wanted}), use)) {
            found[{each.cell.source, each.cell.outputs.front()}] = each.connections.complements();
            EXPECT_TRUE(is_right(each, wanted)) << each.cell.source->name;
        }
        EXPECT_EQ(found, expected) << wanted.value.get_hex_string();
    }
}

TEST(match, agrees_with_brute_force_on_libraries)
{
    std::mt19937 random(5); // fixed
    for (const char* file : {CELLFN_LIBRARY, CELLFN_LIBERTY}) {
        const library source = read_library_file(file);
        const std::vector<tried_output> tried = try_outputs(source);
        BOOL_TRUTH_TABLE wanted = from_hex(3, "00");
        for (unsigned column = 0; column < 256; ++column) {
            wanted.value.words[0] = column;
            compare(source, tried, wanted);
        }
        wanted = from_hex(4, "0000");
        std::vector<unsigned> places{0, 1, 2, 3};
        for (int round = 0; round < 128; ++round) { // any function, and one that is matched
            wanted.value.words[0] = static_cast<std::uint32_t>(random() % 0x10000U);
            compare(source, tried, wanted);
            const tried_output& chosen = tried[random() % tried.size()];
            const auto any = static_cast<std::ptrdiff_t>(random() % chosen.all.size());
            std::uint64_t column = std::next(chosen.all.begin(), any)->first;
            for (unsigned inputs = chosen.function.inputs; inputs < 4; ++inputs) {
                column |= column << (1U << inputs);
            }
            std::shuffle(places.begin(), places.end(), random);
            wanted.value.words[0] = static_cast<std::uint32_t>(bound(column, places, 0));
            compare(source, tried, wanted);
        }
    }
}

TEST(classes, agree_with_brute_force)
{
    for (const char* file : {CELLFN_LIBRARY, CELLFN_LIBERTY}) {
        const library source = read_library_file(file);
        const std::vector<tried_output> tried = try_outputs(source);
        std::vector<const cell*> cells;
        for (const cell& each : source.cells) {
            cells.push_back(&each);
        }
        for (const inverters use : {inverters::allowed, inverters::none}) {
            const std::vector<cell_class> found = classes_of(cells, use);
            std::map<output_key, std::size_t> class_of;
            for (std::size_t i = 0; i < found.size(); ++i) {
                double area = 0;
                for (const cell_output& each : found[i].members) {
                    EXPECT_LE(area, *each.source->area) << each.source->name;
                    area = *each.source->area;
                    class_of[{each.source, each.output}] = i;
                }
            }
            for (const tried_output& one : tried) {
                for (const tried_output& other : tried) {
                    const int least = one.function.inputs == other.function.inputs
                                          ? fewest(one.all, other.function.column)
                                          : -1;
                    EXPECT_EQ(class_of.at({one.source, one.number}) ==
                                  class_of.at({other.source, other.number}),
                              use == inverters::allowed ? least >= 0 : least == 0)
                        << one.source->name << ' ' << other.source->name;
                }
            }
        }
    }
}

/// Every fifth function of three inputs as a cell, and all functions as what is wanted.
TEST(match, tells_every_binding)
{
    for (unsigned seed = 1; seed < 256; seed += 5) {
        BOOL_TRUTH_TABLE cell = from_hex(3, "00");
        cell.value.words[0] = seed;
        const function_set source({cell});
        bindings expected = try_everything(reduced(cell));
        for (unsigned other = 0; other < 256 && source.support().size() == 3; ++other) {
            BOOL_TRUTH_TABLE target = cell;
            target.value.words[0] = other;
            const matcher search(function_set({target}), inverters::allowed);
            std::vector<int> counts(5);
            for (std::size_t count = 0; count < counts.size(); ++count) {
                search.for_each(source, static_cast<int>(count),
                                [&](const binding&) { ++counts[count]; });
            }
            const std::vector<int>& all = expected.try_emplace(other, 5).first->second;
            EXPECT_EQ(counts, all) << seed << ' ' << other;
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
