// The exchange of two inputs and the permutation of all.
#include "column_words.h"

#include <algorithm>
#include <utility>

namespace {

using namespace basbdtt;
using words = std::vector<std::uint32_t>;

/// Exchanges two inputs of a canonical column; low < high.
void exchange(words& column, int low, int high)
{
    if (high < word_inputs) {
        const std::uint32_t mask = projection_mask[static_cast<std::size_t>(low)] &
                                   ~projection_mask[static_cast<std::size_t>(high)];
        const int shift = (1 << high) - (1 << low);
        for (std::uint32_t& word : column) {
            word = delta_swap(word, mask, shift);
        }
        return;
    }
    const std::size_t high_block = block_words(high);
    for (std::size_t start = 0; start < column.size(); start += 2 * high_block) {
        if (low < word_inputs) {
            const std::uint32_t mask = ~projection_mask[static_cast<std::size_t>(low)];
            const int shift = 1 << low;
            for (std::size_t i = start; i < start + high_block; ++i) {
                const std::uint32_t difference =
                    ((column[i] >> shift) ^ column[i + high_block]) & mask;
                column[i + high_block] ^= difference;
                column[i] ^= difference << shift;
            }
        } else {
            const std::size_t low_block = block_words(low);
            for (std::size_t i = start + low_block; i < start + high_block; i += 2 * low_block) {
                const auto first = column.begin() + static_cast<std::ptrdiff_t>(i);
                const auto length = static_cast<std::ptrdiff_t>(low_block);
                std::swap_ranges(first, first + length,
                                 first + static_cast<std::ptrdiff_t>(high_block - low_block));
            }
        }
    }
}

} // namespace

void BOOL_TRUTH_TABLE::rotate_inputs(int i0, int i1)
{
    basbd_require(i0 >= 0 && i0 < get_width() && i1 >= 0 && i1 < get_width(),
                  "i0>=0 && i0<get_width() && i1>=0 && i1<get_width()", __PRETTY_FUNCTION__);
    if (i0 == i1) {
        return;
    }
    make_canonical(value, width);
    exchange(value.words, std::min(i0, i1), std::max(i0, i1));
}

void BOOL_TRUTH_TABLE::rotate_inputs(int* perm)
{
    require_column_width(width);
    std::uint32_t seen = 0;
    std::array<int, BASBDTT_MAX_WIDTH> target{};
    for (int i = 0; i < width; ++i) {
        basbd_require(perm[i] >= 0 && perm[i] < get_width() && (seen & (1U << perm[i])) == 0,
                      "perm[i]>=0 && perm[i]<get_width() && !(x & (1<<perm[i]))",
                      __PRETTY_FUNCTION__);
        seen |= 1U << perm[i];
        target[static_cast<std::size_t>(i)] = perm[i];
    }
    make_canonical(value, width);
    for (int i = 0; i < width; ++i) {
        int& here = target[static_cast<std::size_t>(i)];
        while (here != i) {
            const int there = here;
            exchange(value.words, std::min(i, there), std::max(i, there));
            std::swap(here, target[static_cast<std::size_t>(there)]);
        }
    }
}
