/// @file
/// @brief The arithmetic on bit positions of a column, in one place: sizes, masks and the exchange
/// inside a word.
#pragma once

#include "basbdtt.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace basbdtt {

/// Inputs 0 to 4 select a bit inside a word, the others a word of the column.
constexpr int word_inputs = 5;

/// Inputs 0 to 5 select a bit inside a pair of words.
constexpr int pair_inputs = 6;

constexpr std::size_t index(int input) { return static_cast<std::size_t>(input); }

/// Words of a column of 2^width bits; a column of width 0 takes one.
constexpr std::size_t words_for_width(int width)
{
    return width <= word_inputs ? 1 : std::size_t{1} << (width - word_inputs);
}

/// Words from one value of an input to the other; for inputs that select a word.
constexpr std::size_t block_words(int input) { return std::size_t{1} << (input - word_inputs); }

/// The meaningful bits of the column's first pair of words.
constexpr std::uint64_t first_pair_mask(int width)
{
    return width >= pair_inputs ? ~std::uint64_t{0} : (std::uint64_t{1} << (1 << width)) - 1;
}

/// The meaningful bits of the column's last word.
constexpr std::uint32_t last_word_mask(int width)
{
    return static_cast<std::uint32_t>(first_pair_mask(width));
}

/// Inputs that select a bit inside a `word_type`.
template <typename word_type>
constexpr std::size_t inputs_inside()
{
    std::size_t inputs = 0;
    while ((std::size_t{1} << inputs) < sizeof(word_type) * 8) {
        ++inputs;
    }
    return inputs;
}

/// The masks of `projection_mask`, one for each input inside a `word_type`.
template <typename word_type>
constexpr auto make_projection_masks()
{
    std::array<word_type, inputs_inside<word_type>()> masks{};
    for (std::size_t input = 0; input < masks.size(); ++input) {
        for (unsigned bit = 0; bit < sizeof(word_type) * 8; ++bit) {
            masks[input] =
                static_cast<word_type>(masks[input] | (word_type{(bit >> input) % 2 != 0} << bit));
        }
    }
    return masks;
}

/// The column of each input inside a word: bit x is set where bit `input` of x is.
constexpr auto projection_mask = make_projection_masks<std::uint32_t>();

/// The same for a pair of words, the lower one in the low half.
constexpr auto pair_projection_mask = make_projection_masks<std::uint64_t>();

static_assert(projection_mask[0] == 0xAAAAAAAAU && projection_mask[4] == 0xFFFF0000U);

/// Exchanges the bits under `mask` with those `shift` places above them (Knuth, TAOCP 4A, 7.1.3).
template <typename word_type, typename mask_type>
constexpr void delta_swap(word_type& word, mask_type mask, int shift)
{
    const word_type difference = ((word >> shift) ^ word) & mask;
    word ^= difference ^ (difference << shift);
}

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "a pair of words is read at once");

/// Two words at once, the first in the low half.
inline std::uint64_t load_pair(const std::uint32_t* words)
{
    std::uint64_t pair = 0;
    std::memcpy(&pair, words, sizeof pair);
    return pair;
}

inline void store_pair(std::uint32_t* words, std::uint64_t pair)
{
    std::memcpy(words, &pair, sizeof pair);
}

/// The whole column of a narrow table: at most one pair.
inline std::uint64_t load_narrow(const std::uint32_t* words, int width)
{
    return width <= word_inputs ? words[0] : load_pair(words);
}

inline void store_narrow(std::uint32_t* words, int width, std::uint64_t column)
{
    if (width <= word_inputs) {
        words[0] = static_cast<std::uint32_t>(column);
    } else {
        store_pair(words, column);
    }
}

/// Calls `action` with an input inside a pair as a constant: shifts by constants are the cheap
/// ones.
template <typename action_type>
void with_pair_input(int input, action_type action)
{
    switch (input) {
    case 0:
        return action(std::integral_constant<int, 0>());
    case 1:
        return action(std::integral_constant<int, 1>());
    case 2:
        return action(std::integral_constant<int, 2>());
    case 3:
        return action(std::integral_constant<int, 3>());
    case 4:
        return action(std::integral_constant<int, 4>());
    default:
        return action(std::integral_constant<int, 5>());
    }
}

} // namespace basbdtt
