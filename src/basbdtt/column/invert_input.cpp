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
    make_canonical(value, width);
    std::uint32_t* const words = value.words.data();
    if (input >= pair_inputs) {
        swap_neighbours(words, value.words.size(), block_words(input));
        return;
    }
    const std::uint64_t mask = pair_projection_mask[static_cast<std::size_t>(input)];
    const int shift = 1 << input;
    if (width > pair_inputs) {
        invert_in_pairs(words, value.words.size(), mask, shift);
        return;
    }
    std::uint64_t column = load_narrow(words, width);
    invert(column, mask, shift);
    store_narrow(words, width, column);
}
