/// @file
/// @brief The projection onto one input: the test for it and its column.
#include "column_words.h"
#include "function_clones.h"

#include <algorithm>

namespace {

using namespace basbdtt;

/// @brief A stretch of a column that is compared or filled at once.
///
/// A projection onto an input below `stretch_inputs` repeats every stretch; one onto an input above
/// is constant in each.
constexpr int stretch_inputs = 11;
constexpr std::size_t stretch_words = words_for_width(stretch_inputs);
using stretch = std::array<std::uint32_t, stretch_words>;

/// The first stretch of each projection; that of an input above is the last, all zero.
constexpr auto make_first_stretches()
{
    std::array<stretch, stretch_inputs + 1> stretches{};
    for (std::size_t input = 0; input < stretch_inputs; ++input) {
        for (std::size_t i = 0; i < stretch_words; ++i) {
            if (input < projection_mask.size()) {
                stretches[input][i] = projection_mask[input];
            } else if ((i >> (input - projection_mask.size())) % 2 != 0) {
                stretches[input][i] = ~std::uint32_t{0};
            }
        }
    }
    return stretches;
}
constexpr auto first_stretches = make_first_stretches();

const stretch& first_stretch(int input)
{
    return first_stretches[static_cast<std::size_t>(std::min(input, stretch_inputs))];
}

/// All ones where the stretch from word `start` is the complement of the first one.
std::uint64_t stretch_complement(std::size_t start, int input)
{
    return input >= stretch_inputs && (start & block_words(input)) != 0 ? ~std::uint64_t{0} : 0;
}

/// For columns of whole stretches.
BASBDTT_CLONES bool is_projection(const std::uint32_t* words, std::size_t size, int input)
{
    const stretch& first = first_stretch(input);
    for (std::size_t start = 0; start < size; start += stretch_words) {
        const auto complement = static_cast<std::uint32_t>(stretch_complement(start, input));
        std::uint32_t difference = 0;
        for (std::size_t i = 0; i < stretch_words; ++i) {
            difference |= words[start + i] ^ first[i] ^ complement;
        }
        if (difference != 0) {
            return false;
        }
    }
    return true;
}

/// For columns of at least two pairs that are a stretch or whole stretches.
BASBDTT_CLONES void fill_projection(std::uint32_t* words, std::size_t size, int input)
{
    const std::size_t length = std::min(size, stretch_words);
    const stretch& first = first_stretch(input);
    const bool uniform = input < pair_inputs || input >= stretch_inputs; // all pairs are the same
    with_group(length, [=, &first](auto kind) {
        typename decltype(kind)::type group;
        for (std::size_t start = 0; start < size; start += length) {
            load_group(group, first.data());
            group ^= stretch_complement(start, input);
            for (std::size_t i = 0; i < length; i += group_words<decltype(group)>) {
                if (!uniform) {
                    load_group(group, first.data() + i);
                }
                store_group(words + start + i, group);
            }
        }
    });
}

} // namespace

bool BOOL_TRUTH_TABLE::is_identity_for_input(int input) const
{
    basbd_require(input >= 0, "input>=0", __PRETTY_FUNCTION__);
    basbd_require(input < get_width(), "input<get_width()", __PRETTY_FUNCTION__);
    require_column_width(width);
    const std::size_t size = words_for_width(width);
    const std::uint32_t* const words = value.words.data();
    // The last entry of a projection is set, so a column that ends before it is none.
    if (value.words.size() < size) {
        return false;
    }
    const stretch& first = first_stretch(input);
    if (size == 1) {
        return ((words[0] ^ first[0]) & last_word_mask(width)) == 0;
    }
    return size <= stretch_words ? std::equal(words, words + size, first.begin())
                                 : is_projection(words, size, input);
}

void BOOL_TRUTH_TABLE::set_identity_for_input(int new_width, int input)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    width = static_cast<signed char>(new_width);
    basbd_require(input >= 0, "input>=0", __PRETTY_FUNCTION__);
    basbd_require(input < new_width, "input<width", __PRETTY_FUNCTION__);
    const std::size_t size = words_for_width(new_width);
    if (size <= value.words.capacity()) {
        value.words.resize(size);
    } else {
        value.words = std::vector<std::uint32_t>(size); // nothing old is copied
    }
    if (new_width <= pair_inputs) {
        const std::uint64_t column = pair_projection_mask[static_cast<std::size_t>(input)];
        store_narrow(value.words.data(), new_width, column & first_pair_mask(new_width));
    } else {
        fill_projection(value.words.data(), size, input);
    }
    value.bit_count = std::int32_t{1} << new_width;
}
