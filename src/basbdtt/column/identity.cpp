// The projection onto one input: the test for it and its column.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/word_groups.h"

#include <algorithm>
#include <cstring>

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

constexpr auto make_ones()
{
    stretch ones{};
    for (std::uint32_t& word : ones) {
        word = ~std::uint32_t{0};
    }
    return ones;
}
constexpr auto stretch_of_ones = make_ones();

const stretch& first_stretch(int input)
{
    return first_stretches[static_cast<std::size_t>(std::min(input, stretch_inputs))];
}

/// The first stretch of the block that ends before word `end`, for an input above a stretch.
const stretch& block_stretch(std::size_t end, std::size_t block)
{
    return end % (2 * block) == 0 ? stretch_of_ones : first_stretches.back();
}

bool equal_words(const std::uint32_t* first, const std::uint32_t* second, std::size_t size)
{
    return std::memcmp(first, second, size * sizeof *first) == 0;
}

/// Whether the words are `first` again and again; whole stretches.
bool is_repeated(const std::uint32_t* words, std::size_t size, const stretch& first)
{
    return equal_words(words, first.data(), stretch_words) &&
           equal_words(words, words + stretch_words, size - stretch_words);
}

/// For columns of whole stretches; apart, so that narrow columns do not save registers for it.
[[gnu::noinline]] bool is_projection(const std::uint32_t* words, std::size_t size, int input)
{
    if (input < stretch_inputs) {
        return is_repeated(words, size, first_stretch(input));
    }
    const std::size_t block = block_words(input);
    for (std::size_t end = block; end <= size; end += block) {
        if (!is_repeated(words + end - block, block, block_stretch(end, block))) {
            return false;
        }
    }
    return true;
}

/// The compiler would copy a length that it knows to be short by a slow string instruction.
void copy_group_by_group(const std::uint32_t* source, std::uint32_t* target, std::size_t size)
{
    with_group(size, [=](auto kind) {
        typename decltype(kind)::type group;
        for (std::size_t i = 0; i < size; i += group_words<decltype(group)>) {
            load_group(group, source + i);
            store_group(target + i, group);
        }
    });
}

/// For columns of more than one stretch; apart, so that shorter ones do not save registers for it.
[[gnu::noinline]] void fill_projection(std::uint32_t* words, std::size_t size, int input)
{
    if (input >= stretch_inputs) {
        const std::size_t block = block_words(input);
        for (std::size_t start = 0; start < size; start += 2 * block) {
            std::fill_n(words + start, block, 0U);
            std::fill_n(words + start + block, block, ~0U);
        }
        return;
    }
    constexpr int byte_inputs = 3;
    if (input < byte_inputs) {
        std::memset(words, static_cast<int>(projection_mask[index(input)] & 0xFFU),
                    size * sizeof *words);
        return;
    }
    constexpr std::size_t longest_copy = 1024; // stays in the nearest cache
    copy_group_by_group(first_stretch(input).data(), words, stretch_words);
    for (std::size_t filled = stretch_words; filled < size;) {
        const std::size_t length = std::min(filled, longest_copy);
        std::copy_n(words, length, words + filled);
        filled += length;
    }
}

/// For a column that is not yet of its length. What it held is not copied into longer memory.
[[gnu::noinline]] void set_identity_in_new_words(BOOL_TRUTH_TABLE& table, int input)
{
    std::vector<std::uint32_t>& words = table.value.words;
    const std::size_t size = words_for_width(table.width);
    if (size <= words.capacity()) {
        words.resize(size);
    } else {
        words = std::vector<std::uint32_t>(size);
    }
    table.set_identity_for_input(table.width, input);
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
    if (width <= pair_inputs) {
        const std::uint64_t wanted = pair_projection_mask[index(input)];
        return ((load_narrow(words, width) ^ wanted) & first_pair_mask(width)) == 0;
    }
    return size <= stretch_words ? equal_words(words, first_stretch(input).data(), size)
                                 : is_projection(words, size, input);
}

void BOOL_TRUTH_TABLE::set_identity_for_input(int new_width, int input)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    width = static_cast<signed char>(new_width);
    basbd_require(input >= 0, "input>=0", __PRETTY_FUNCTION__);
    basbd_require(input < new_width, "input<width", __PRETTY_FUNCTION__);
    if (is_narrow(*this)) {
        return change_narrow(*this, [=](std::uint64_t /*column*/) {
            return pair_projection_mask[index(input)] & first_pair_mask(new_width);
        });
    }
    if (!is_wide(*this)) {
        return set_identity_in_new_words(*this, input);
    }
    value.bit_count = std::int32_t{1} << new_width;
    if (value.words.size() <= stretch_words) {
        copy_group_by_group(first_stretch(input).data(), value.words.data(), value.words.size());
    } else {
        fill_projection(value.words.data(), value.words.size(), input);
    }
}
