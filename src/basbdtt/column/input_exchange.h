/// @file
/// @brief What the exchange of two inputs and the permutation of all have in common.
#pragma once

#include "basbdtt/column/bit_positions.h"

namespace basbdtt {

/// The exchange of two inputs inside a pair.
struct pair_exchange {
    std::uint64_t mask;
    int shift;
};

/// The exchanges of any two inputs; that of an input with itself changes nothing.
constexpr auto make_pair_exchanges()
{
    std::array<std::array<pair_exchange, pair_inputs>, pair_inputs> exchanges{};
    for (std::size_t high = 0; high < exchanges.size(); ++high) {
        for (std::size_t low = 0; low < high; ++low) {
            exchanges[low][high] = {pair_projection_mask[low] & ~pair_projection_mask[high],
                                    (1 << high) - (1 << low)};
            exchanges[high][low] = exchanges[low][high];
        }
    }
    return exchanges;
}
constexpr auto pair_exchanges = make_pair_exchanges();

/// Exchanges the bits of `low` where the input inside is 1 with those of `high` where it is 0.
template <typename group_type>
void cross(group_type& low, group_type& high, std::uint64_t mask, int shift)
{
    const group_type difference = ((low >> shift) ^ high) & mask;
    high ^= difference;
    low ^= difference << shift;
}

/// Up to this width, exchanges one after the other cost less than a plan of stages and a second
/// column.
constexpr int short_inputs = 12;

/// Permutes the inputs of a column of more than `short_inputs`.
void permute_in_stages(TRUTH_TABLE_VAL& value, const int* perm, int width);

/// Exchanges two inputs of a column that is longer than a pair; low < high.
void exchange_inputs(std::uint32_t* words, std::size_t size, int low, int high);

} // namespace basbdtt
