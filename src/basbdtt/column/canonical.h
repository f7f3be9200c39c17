/// @file
/// @brief Columns whose fields were set by hand: what is missing, and what lies beyond.
#pragma once

#include "basbdtt/column/bit_positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdtt {

/// Whether the words from `begin` on are zero.
inline bool all_zero(const std::vector<std::uint32_t>& words, std::size_t begin)
{
    return std::all_of(words.begin() + static_cast<std::ptrdiff_t>(begin), words.end(),
                       [](std::uint32_t word) { return word == 0; });
}

/// @brief Stops as the column's constructor does when no column of `width` inputs exists.
///
/// The constructor is called for that, so that the message names its signature.
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
    const std::size_t size = words_for_width(width);
    if (value.words.size() != size) {
        value.words.resize(size);
    }
    if (width < word_inputs) {
        value.words[0] &= last_word_mask(width);
    }
    value.bit_count = std::int32_t{1} << width;
}

} // namespace basbdtt
