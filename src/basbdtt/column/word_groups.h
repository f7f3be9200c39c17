/// @file
/// @brief Groups of words that are moved and combined as one.
#pragma once

#include "basbdtt/column/bit_positions.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace basbdtt {

/// @brief One to eight pairs that are moved and combined as one, so that blocks of a few words cost
/// no loop of their own. The compiler maps an operation on a group to the registers it has.
template <std::size_t words>
struct word_group {
    using type [[gnu::vector_size(words * sizeof(std::uint32_t))]] = std::uint64_t;
};

template <>
struct word_group<2> {
    using type = std::uint64_t;
};

template <typename group_type>
void load_group(group_type& group, const std::uint32_t* words)
{
    std::memcpy(&group, words, sizeof group);
}

template <typename group_type>
void store_group(std::uint32_t* words, const group_type& group)
{
    std::memcpy(words, &group, sizeof group);
}

/// @brief Calls `action` with a value of the largest group whose words divide `length`.
/// @param length  a power of two from 2
template <typename action_type>
void with_group(std::size_t length, action_type action)
{
    if (length == 2) {
        action(word_group<2>());
    } else if (length == 4) {
        action(word_group<4>());
    } else if (length == 8) {
        action(word_group<8>());
    } else {
        action(word_group<16>());
    }
}

/// The words of a group.
template <typename group_type>
constexpr std::size_t group_words = sizeof(group_type) / sizeof(std::uint32_t);

/// Exchanges two blocks that are whole groups.
template <typename group_type>
void swap_blocks(std::uint32_t* first, std::uint32_t* second, std::size_t length)
{
    for (std::size_t i = 0; i < length; i += group_words<group_type>) {
        group_type from_first;
        group_type from_second;
        load_group(from_first, first + i);
        load_group(from_second, second + i);
        store_group(first + i, from_second);
        store_group(second + i, from_first);
    }
}

} // namespace basbdtt
