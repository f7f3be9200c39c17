/// @file
/// @brief What the exchange of two inputs and the permutation of all have in common.
#pragma once

#include "basbdtt/column/bit_positions.h"

namespace basbdtt {

constexpr std::size_t index(int input) { return static_cast<std::size_t>(input); }

/// The exchange of two inputs inside a pair.
struct pair_exchange {
    std::uint64_t mask;
    int shift;
};

/// low < high < pair_inputs
constexpr pair_exchange exchange_in_pair(int low, int high)
{
    return {pair_projection_mask[index(low)] & ~pair_projection_mask[index(high)],
            (1 << high) - (1 << low)};
}

/// Exchanges the bits of `low` where the input inside is 1 with those of `high` where it is 0.
template <typename group_type>
void cross(group_type& low, group_type& high, std::uint64_t mask, int shift)
{
    const group_type difference = ((low >> shift) ^ high) & mask;
    high ^= difference;
    low ^= difference << shift;
}

/// @brief Exchanges an input inside a pair with one that selects a block of at least a pair.
///
/// low < pair_inputs <= high
void cross_one(std::uint32_t* words, std::size_t size, int low, int high);

} // namespace basbdtt
