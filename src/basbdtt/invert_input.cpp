// The complement of one input: both halves of the column that the input selects change places.
#include "column_words.h"

#include <algorithm>

using namespace basbdtt;

void BOOL_TRUTH_TABLE::invert_input(int input)
{
    basbd_require(input >= 0 && input < get_width(), "input>=0 && input<get_width()",
                  __PRETTY_FUNCTION__);
    make_canonical(value, width);
    std::vector<std::uint32_t>& words = value.words;
    if (input < word_inputs) {
        const std::uint32_t mask = projection_mask[static_cast<std::size_t>(input)];
        const int shift = 1 << input;
        for (std::uint32_t& word : words) {
            word = ((word & mask) >> shift) | ((word << shift) & mask);
        }
        return;
    }
    const auto block = static_cast<std::ptrdiff_t>(block_words(input));
    for (auto low = words.begin(); low != words.end(); low += 2 * block) {
        std::swap_ranges(low, low + block, low + block);
    }
}
