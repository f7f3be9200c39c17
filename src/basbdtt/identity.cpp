// The projection onto one input: the test for it and its column.
#include "column_words.h"

#include <algorithm>

namespace {

using namespace basbdtt;

/// Word `index` of the projection onto `input`.
std::uint32_t projection_word(int input, std::size_t index)
{
    if (input < word_inputs) {
        return projection_mask[static_cast<std::size_t>(input)];
    }
    return (index & block_words(input)) != 0 ? ~std::uint32_t{0} : 0;
}

} // namespace

bool BOOL_TRUTH_TABLE::is_identity_for_input(int input) const
{
    basbd_require(input >= 0, "input>=0", __PRETTY_FUNCTION__);
    basbd_require(input < get_width(), "input<get_width()", __PRETTY_FUNCTION__);
    const std::size_t size = words_for_width(width);
    // The last entry of a projection is set, so a column that ends before it is none.
    if (value.words.size() < size) {
        return false;
    }
    std::uint32_t difference = 0;
    for (std::size_t i = 0; i < size && difference == 0; ++i) {
        difference = (value.words[i] ^ projection_word(input, i)) & last_word_mask(width);
    }
    return difference == 0;
}

void BOOL_TRUTH_TABLE::set_identity_for_input(int new_width, int input)
{
    basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
    basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
    width = static_cast<signed char>(new_width);
    basbd_require(input >= 0, "input>=0", __PRETTY_FUNCTION__);
    basbd_require(input < new_width, "input<width", __PRETTY_FUNCTION__);
    value.words.assign(words_for_width(new_width), 0U);
    for (std::size_t i = 0; i < value.words.size(); ++i) {
        value.words[i] = projection_word(input, i) & last_word_mask(new_width);
    }
    value.bit_count = std::int32_t{1} << new_width;
}
