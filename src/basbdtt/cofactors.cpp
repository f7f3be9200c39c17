// The two Shannon cofactors for an input.
#include "column_words.h"

#include <algorithm>

namespace {

using namespace basbdtt;

/// The low half of the result holds the bits of a pair of words for which `input` is 0, in order.
constexpr std::uint64_t compacted(std::uint64_t pair, int input)
{
    pair &= ~pair_projection_mask[static_cast<std::size_t>(input)];
    for (int i = input; i < word_inputs; ++i) {
        pair = (pair | (pair >> (1 << i))) & ~pair_projection_mask[static_cast<std::size_t>(i) + 1];
    }
    return pair;
}

BOOL_TRUTH_TABLE cofactor(const BOOL_TRUTH_TABLE& table, int input, bool high)
{
    const std::vector<std::uint32_t>& words = table.value.words;
    if (words.size() < words_for_width(table.width)) {
        BOOL_TRUTH_TABLE whole(table);
        make_canonical(whole.value, table.width);
        return cofactor(whole, input, high);
    }
    BOOL_TRUTH_TABLE half;
    half.width = static_cast<signed char>(table.width - 1);
    half.value.bit_count = std::int32_t{1} << half.width;
    std::vector<std::uint32_t>& result = half.value.words;
    result.resize(words_for_width(half.width));
    if (input < word_inputs) {
        const int shift = high ? 1 << input : 0;
        for (std::size_t i = 0; i < result.size(); ++i) {
            std::uint64_t pair = words[2 * i];
            if (table.width > word_inputs) {
                pair |= std::uint64_t{words[2 * i + 1]} << 32;
            }
            result[i] = static_cast<std::uint32_t>(compacted(pair >> shift, input));
        }
        result.back() &= last_word_mask(half.width);
    } else {
        const auto block = static_cast<std::ptrdiff_t>(block_words(input));
        auto source = words.begin() + (high ? block : 0);
        for (auto target = result.begin(); target != result.end(); target += block) {
            std::copy_n(source, block, target);
            source += 2 * block;
        }
    }
    return half;
}

} // namespace

BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_true_factor_for_input(int input) const
{
    basbd_require(input >= 0 && input < get_width() && get_width() > 0,
                  "input>=0 && input<get_width() && get_width()>0", __PRETTY_FUNCTION__);
    return cofactor(*this, input, true);
}

BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_false_factor_for_input(int input) const
{
    basbd_require(input >= 0 && input < get_width() && get_width() > 0,
                  "input>=0 && input<get_width() && get_width()>0", __PRETTY_FUNCTION__);
    return cofactor(*this, input, false);
}
