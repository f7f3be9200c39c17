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

/// Whether the column is one word or one pair, as the width asks for.
inline bool is_narrow(const BOOL_TRUTH_TABLE& table)
{
    const std::size_t size = table.value.words.size();
    return table.width == pair_inputs ? size == 2
                                      : size == 1 && table.width > 0 && table.width < pair_inputs;
}

/// Whether the column is longer than a pair, and as long as the width asks for.
inline bool is_wide(const BOOL_TRUTH_TABLE& table)
{
    return table.width > pair_inputs && table.width <= BASBDTT_MAX_WIDTH &&
           table.value.words.size() == block_words(table.width);
}

/// @brief Calls an operation again on a table that was neither narrow nor wide and now is.
///
/// Apart, so that the other tables, nearly all, do not save registers for it.
template <typename operation_type>
[[gnu::noinline, gnu::cold]] void call_canonical(BOOL_TRUTH_TABLE& table, operation_type again)
{
    make_canonical(table.value, table.width);
    again();
}

/// Replaces the column of a narrow table by what `change` makes of it.
template <typename change_type>
void change_narrow(BOOL_TRUTH_TABLE& table, change_type change)
{
    const int width = table.get_width();
    std::uint32_t* const words = table.value.words.data();
    store_narrow(words, width, change(load_narrow(words, width) & first_pair_mask(width)));
    table.value.bit_count = std::int32_t{1} << width;
}

} // namespace basbdtt
