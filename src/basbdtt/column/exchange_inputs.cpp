// The exchange of two inputs.
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/function_clones.h"
#include "basbdtt/column/input_exchange.h"
#include "basbdtt/column/word_groups.h"

#include <algorithm>

namespace {

using namespace basbdtt;

/// @brief Exchanges an input inside a pair with one that selects a block of at least a pair.
///
/// low < pair_inputs <= high
BASBDTT_CLONES void cross_blocks(std::uint32_t* words, std::size_t size, int low, int high)
{
    const std::size_t block = block_words(high);
    const std::uint64_t mask = ~pair_projection_mask[index(low)];
    const int shift = 1 << low;
    with_group(block, [=](auto kind) {
        using group_type = typename decltype(kind)::type;
        for (std::size_t start = 0; start < size; start += 2 * block) {
            for (std::size_t i = start; i < start + block; i += group_words<group_type>) {
                group_type lower;
                group_type upper;
                load_group(lower, words + i);
                load_group(upper, words + i + block);
                cross(lower, upper, mask, shift);
                store_group(words + i, lower);
                store_group(words + i + block, upper);
            }
        }
    });
}

/// Both inputs select a bit inside a pair.
BASBDTT_CLONES void exchange_in_pairs(std::uint32_t* words, std::size_t size, pair_exchange inputs)
{
    with_group(size, [=](auto kind) {
        typename decltype(kind)::type group;
        for (std::size_t i = 0; i < size; i += group_words<decltype(group)>) {
            load_group(group, words + i);
            delta_swap(group, inputs.mask, inputs.shift);
            store_group(words + i, group);
        }
    });
}

/// Exchanges two inputs that both select a block of at least a pair; low_block < high_block.
BASBDTT_CLONES void exchange_blocks(std::uint32_t* words, std::size_t size, std::size_t low_block,
                                    std::size_t high_block)
{
    with_group(low_block, [=](auto group) {
        for (std::size_t start = 0; start < size; start += 2 * high_block) {
            for (std::size_t i = low_block; i < high_block; i += 2 * low_block) {
                std::uint32_t* const first = words + start + i;
                swap_blocks<typename decltype(group)::type>(first, first + high_block - low_block,
                                                            low_block);
            }
        }
    });
}

} // namespace

void basbdtt::exchange_inputs(std::uint32_t* words, std::size_t size, int low, int high)
{
    if (low >= pair_inputs) {
        exchange_blocks(words, size, block_words(low), block_words(high));
    } else if (high >= pair_inputs) {
        cross_blocks(words, size, low, high);
    } else {
        exchange_in_pairs(words, size, pair_exchanges[index(low)][index(high)]);
    }
}

void BOOL_TRUTH_TABLE::rotate_inputs(int i0, int i1)
{
    basbd_require(i0 >= 0 && i0 < get_width() && i1 >= 0 && i1 < get_width(),
                  "i0>=0 && i0<get_width() && i1>=0 && i1<get_width()", __PRETTY_FUNCTION__);
    if (i0 == i1) {
        return;
    }
    if (is_narrow(*this)) {
        return change_narrow(*this, [=](std::uint64_t column) {
            const pair_exchange& inputs = pair_exchanges[index(i0)][index(i1)];
            delta_swap(column, inputs.mask, inputs.shift);
            return column;
        });
    }
    if (!is_wide(*this)) {
        return call_canonical(*this, [=] { rotate_inputs(i0, i1); });
    }
    value.bit_count = std::int32_t{1} << width;
    exchange_inputs(value.words.data(), value.words.size(), std::min(i0, i1), std::max(i0, i1));
}
