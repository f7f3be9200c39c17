// The complement of one input: both halves of the column that the input selects change
// places.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/function_clones.h"
#include "basbdtt/column/word_groups.h"

namespace {

using namespace basbdtt;

/// Complements an input inside a pair.
template <typename group_type>
void invert(group_type& group, std::uint64_t mask, int shift)
{
    group = ((group & mask) >> shift) | ((group << shift) & mask);
}

BASBDTT_CLONES void invert_in_pairs(std::uint32_t* words, std::size_t size, std::uint64_t mask,
                                    int shift)
{
    with_group(size, [=](auto kind) {
        typename decltype(kind)::type group;
        for (std::size_t i = 0; i < size; i += group_words<decltype(group)>) {
            load_group(group, words + i);
            invert(group, mask, shift);
            store_group(words + i, group);
        }
    });
}

/// The input selects a block of at least a pair.
BASBDTT_CLONES void swap_neighbours(std::uint32_t* words, std::size_t size, std::size_t block)
{
    with_group(block, [=](auto group) {
        for (std::uint32_t* low = words; low != words + size; low += 2 * block) {
            swap_blocks<typename decltype(group)::type>(low, low + block, block);
        }
    });
}

} // namespace

void BOOL_TRUTH_TABLE::invert_input(int input)
{
    basbd_require(input >= 0 && input < get_width(), "input>=0 && input<get_width()",
                  __PRETTY_FUNCTION__);
    const int shift = 1 << input;
    if (is_narrow(*this)) {
        return change_narrow(*this, [=](std::uint64_t column) {
            invert(column, pair_projection_mask[index(input)], shift);
            return column;
        });
    }
    if (!is_wide(*this)) {
        return call_canonical(*this, [=] { invert_input(input); });
    }
    value.bit_count = std::int32_t{1} << width;
    std::uint32_t* const words = value.words.data();
    const std::size_t size = value.words.size();
    if (input >= pair_inputs) {
        swap_neighbours(words, size, block_words(input));
    } else {
        invert_in_pairs(words, size, pair_projection_mask[index(input)], shift);
    }
}
