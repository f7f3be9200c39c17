#include "signature.h"

#include <algorithm>
#include <bitset>
#include <cstdlib>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

namespace basbdcells {

namespace {

/// The two cofactors of one input.
struct cofactors {
    cofactors(const BOOL_TRUTH_TABLE& table, int input)
        : low(table.get_false_factor_for_input(input)), high(table.get_true_factor_for_input(input))
    {
    }
    BOOL_TRUTH_TABLE low;
    BOOL_TRUTH_TABLE high;
};

/// @param upper  the cofactors of an input above `input`
symmetry symmetry_with(const cofactors& upper, int input)
{
    const cofactors low(upper.low, input);
    const cofactors high(upper.high, input);
    return {low.high.value == high.low.value, low.low.value == high.high.value};
}

/// The signatures in an order in which equal sets are equal.
std::vector<std::tuple<std::int64_t, std::int64_t, int>> in_order(const signature& from, bool exact)
{
    std::vector<std::tuple<std::int64_t, std::int64_t, int>> keys;
    for (const input_signature& each : from.inputs) {
        const auto [few, many] = std::minmax(each.low_ones, each.high_ones);
        keys.emplace_back(exact ? each.low_ones : few, exact ? each.high_ones : many,
                          each.symmetries);
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

} // namespace

std::int64_t count_ones(const TRUTH_TABLE_VAL& column)
{
    return std::accumulate(column.words.begin(), column.words.end(), std::int64_t{0},
                           [](std::int64_t sum, std::uint32_t word) {
                               return sum +
                                      static_cast<std::int64_t>(std::bitset<32>(word).count());
                           });
}

bool input_signature::fits(const input_signature& other, bool inverted) const
{
    return symmetries == other.symmetries &&
           low_ones == (inverted ? other.high_ones : other.low_ones) &&
           high_ones == (inverted ? other.low_ones : other.high_ones);
}

signature::signature(const BOOL_TRUTH_TABLE& table, std::size_t number)
    : ones(count_ones(table.value)), inputs(number),
      symmetries(number, std::vector<symmetry>(number))
{
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const cofactors halves(table, static_cast<int>(i));
        inputs[i].low_ones = count_ones(halves.low.value);
        inputs[i].high_ones = count_ones(halves.high.value);
        for (std::size_t j = 0; j < i; ++j) {
            const symmetry found = symmetry_with(halves, static_cast<int>(j));
            symmetries[i][j] = symmetries[j][i] = found;
            const int kinds = (found.plain ? 1 : 0) + (found.complemented ? 1 : 0);
            inputs[i].symmetries += kinds;
            inputs[j].symmetries += kinds;
        }
    }
}

bool signature::fits(const signature& other, bool exact) const
{
    return ones == other.ones && in_order(*this, exact) == in_order(other, exact);
}

int signature::least_complements(const signature& other) const
{
    std::map<std::tuple<std::int64_t, std::int64_t, int>, int> surplus; // of rising inputs here
    const auto count = [&](const signature& from, int sign) {
        for (const input_signature& each : from.inputs) {
            if (each.low_ones < each.high_ones) {
                surplus[{each.low_ones, each.high_ones, each.symmetries}] += sign;
            }
        }
    };
    count(*this, 1);
    count(other, -1);
    return std::accumulate(surplus.begin(), surplus.end(), 0,
                           [](int sum, const auto& each) { return sum + std::abs(each.second); });
}

} // namespace basbdcells
