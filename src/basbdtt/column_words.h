/// @file
/// @brief The arithmetic on bit positions of a column, in one place: sizes, masks and the two moves
/// inside a word that every rearrangement is made of.
#pragma once

#include "basbdtt.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace basbdtt {

/// Inputs 0 to 4 select a bit inside a word, the others a word of the column.
constexpr int word_inputs = 5;

/// Words of a column of 2^width bits; a column of width 0 takes one.
constexpr std::size_t words_for_width(int width)
{
    return width <= word_inputs ? 1 : std::size_t{1} << (width - word_inputs);
}

/// Words from one value of an input to the other; for inputs that select a word.
constexpr std::size_t block_words(int input) { return std::size_t{1} << (input - word_inputs); }

/// The meaningful bits of the last word of a column.
constexpr std::uint32_t last_word_mask(int width)
{
    return width >= word_inputs ? ~std::uint32_t{0} : (std::uint32_t{1} << (1 << width)) - 1;
}

/// The masks of `projection_mask`, one for each input inside a `Word`.
template <typename Word, std::size_t inputs>
constexpr std::array<Word, inputs> make_projection_masks()
{
    std::array<Word, inputs> masks{};
    for (std::size_t input = 0; input < inputs; ++input) {
        for (unsigned bit = 0; bit < sizeof(Word) * 8; ++bit) {
            masks[input] |= static_cast<Word>(Word{(bit >> input) & 1U} << bit);
        }
    }
    return masks;
}

/// The column of each input inside a word: bit x is set where bit `input` of x is.
constexpr auto projection_mask = make_projection_masks<std::uint32_t, word_inputs>();

/// The same for a pair of words, the lower one in the low half.
constexpr auto pair_projection_mask = make_projection_masks<std::uint64_t, word_inputs + 1>();

static_assert(projection_mask[0] == 0xAAAAAAAAU && projection_mask[4] == 0xFFFF0000U);

/// Exchanges the bits under `mask` with those `shift` places above them (Knuth, TAOCP 4A, 7.1.3).
template <typename Word>
constexpr Word delta_swap(Word word, Word mask, int shift)
{
    const Word difference = ((word >> shift) ^ word) & mask;
    return word ^ difference ^ (difference << shift);
}

/// Stops as the column's constructor does when no column of `width` inputs exists.
inline void require_column_width(int width)
{
    if (width < 1 || width > BASBDTT_MAX_WIDTH) {
        const TRUTH_TABLE_VAL stops(width, 0);
    }
}

/// @brief Gives a column exactly the words, bits and `bit_count` of `width` inputs.
///
/// Whoever has set the fields by hand may have left other words or stray bits: missing words count
/// as zero, and what lies beyond the column is dropped.
inline void make_canonical(TRUTH_TABLE_VAL& value, int width)
{
    require_column_width(width);
    value.words.resize(words_for_width(width));
    value.words.back() &= last_word_mask(width);
    value.bit_count = std::int32_t{1} << width;
}

} // namespace basbdtt
