#include "basbdcells/matcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>
#include <random>

using namespace basbdcells;

namespace {

BOOL_TRUTH_TABLE from_hex(int width, const std::string& digits)
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_hex_string(width, digits);
    return table;
}

TEST(match, every_shuffled_cell_of_the_shipped_library_is_found)
{
    std::mt19937 random(7); // fixed
    const library source = read_library_file(CELLFN_LIBRARY);
    for (const cell& each : source.cells) {
        const BOOL_TRUTH_TABLE function = table_of(each.outputs.front().function);
        BOOL_TRUTH_TABLE shuffled = function;
        std::vector<int> places(static_cast<std::size_t>(function.get_width()));
        std::iota(places.begin(), places.end(), 0);
        for (int round = 0; round < 20; ++round) {
            std::shuffle(places.begin(), places.end(), random);
            shuffled.rotate_inputs(places.data());
            if (!places.empty() && round % 2 != 0) {
                shuffled.invert_input(places[0]);
            }
            const auto use = round == 0 ? inverters::none : inverters::allowed;
            const auto best = matcher(function_set({shuffled}), use).best(function_set({function}));
            EXPECT_TRUE(best && best->complements() <= (round + 1) / 2) << each.name;
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

/// The value of a function of a cell's pins where what is wanted has the assignment `x`.
bool value_of(const expression& function, const match& found, unsigned x)
{
    unsigned entry = 0;
    for (std::size_t i = 0; i < function.pins.size(); ++i) {
        const std::vector<std::string>& pins = found.cell.pins;
        const auto pin = std::find(pins.begin(), pins.end(), function.pins[i]) - pins.begin();
        const connection& to = found.connections.pins.at(static_cast<std::size_t>(pin));
        const bool value = to.input == connection::tied
                               ? to.constant
                               : ((x >> static_cast<unsigned>(to.input) & 1U) != 0) != to.inverted;
        entry |= (value ? 1U : 0U) << i;
    }
    return (table_of(function).value.words[entry / 32] >> entry % 32 & 1U) != 0;
}

/// Whether a match does what is wanted on every assignment, and its output drives.
bool is_right(const match& found, const BOOL_TRUTH_TABLE& wanted)
{
    const output& drives = found.cell.source->outputs[found.cell.outputs.front()];
    const bool is_three_state = !drives.three_state.steps.empty();
    bool all = true;
    for (unsigned x = 0; x < 1U << static_cast<unsigned>(wanted.width); ++x) {
        const bool value = value_of(drives.function, found, x);
        all &= (value != found.connections.inverted_outputs.front()) ==
               ((wanted.value.words[0] >> x & 1U) != 0);
        all &= !is_three_state || !value_of(drives.three_state, found, x);
    }
    return all;
}

/// Compares the matches of one function, and all their bindings, with what brute force finds.
void compare(const library& source, const std::vector<tried_output>& tried,
             const BOOL_TRUTH_TABLE& wanted)
{
    const reduced target(wanted);
    for (const inverters use : {inverters::allowed, inverters::none}) {
        std::map<output_key, std::vector<int>> expected; // by complements
        for (const tried_output& each : tried) {
            const auto counts = each.all.find(target.column);
            if (each.function.inputs == target.inputs && counts != each.all.end()) {
                std::vector<int> kept = counts->second;
                kept.resize(use == inverters::none ? 1 : kept.size());
                if (kept != std::vector<int>(kept.size())) {
                    expected[{each.source, each.number}] = kept;
                }
            }
        }
        std::map<output_key, std::vector<int>> found;
        const matcher search(function_set({wanted}), use);
        for (const match& each : find_matches(source.cells, function_set({wanted}), use)) {
            EXPECT_TRUE(is_right(each, wanted)) << each.cell.source->name;
            std::vector<int>& counts = found[{each.cell.source, each.cell.outputs.front()}];
            for (int i = 0; i <= search.most_complements(each.cell.functions); ++i) {
                counts.push_back(0);
                search.for_each(each.cell.functions, i, [&](const binding&) { ++counts.back(); });
                EXPECT_TRUE(counts.back() == 0 || each.connections.complements() <= i);
            }
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
                    const auto ways = one.all.find(other.function.column);
                    const bool is_same = one.function.inputs == other.function.inputs &&
                                         ways != one.all.end() &&
                                         (use == inverters::allowed || ways->second[0] > 0);
                    EXPECT_EQ(class_of.at({one.source, one.number}) ==
                                  class_of.at({other.source, other.number}),
                              is_same)
                        << one.source->name << ' ' << other.source->name;
                }
            }
        }
    }
}

} // namespace
