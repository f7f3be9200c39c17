/// @file
/// @brief Columns and their halves for the highest input, without a copy.
#pragma once

#include "basbdtt/column/bit_positions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace basbdtt {

/// What a column comes to.
enum class constancy : std::uint8_t { zero, one, neither };

/// A column of up to 64 entries, or a part of one.
template <int inputs>
struct register_view {
    static constexpr int width = inputs;
    static constexpr std::uint64_t mask = first_pair_mask(width);

    std::uint64_t bits;

    constexpr constancy classify() const
    {
        return bits == 0 ? constancy::zero : bits == mask ? constancy::one : constancy::neither;
    }
    constexpr auto false_half() const
    {
        using half = register_view<width - 1>;
        return half{bits & half::mask};
    }
    constexpr auto true_half() const
    {
        return register_view<width - 1>{bits >> (1U << (width - 1))};
    }
    constexpr bool operator==(const register_view& other) const { return bits == other.bits; }
    constexpr bool complements(const register_view& other) const
    {
        return (bits ^ other.bits) == mask;
    }
};

/// A longer column, or a part of one.
struct memory_view {
    const std::uint32_t* words;
    int width; ///< at least 6

    std::size_t size() const { return words_for_width(width); }
    constancy classify() const
    {
        const std::uint32_t first = words[0];
        const bool uniform = (first == 0 || first == ~0U) &&
                             std::memcmp(words, words + 1, (size() - 1) * sizeof(*words)) == 0;
        return !uniform ? constancy::neither : first == 0 ? constancy::zero : constancy::one;
    }
    memory_view false_half() const { return {words, width - 1}; }
    memory_view true_half() const { return {words + size() / 2, width - 1}; }
    bool operator==(const memory_view& other) const
    {
        return std::memcmp(words, other.words, size() * sizeof(*words)) == 0;
    }
    bool complements(const memory_view& other) const
    {
        return std::equal(words, words + size(), other.words,
                          [](std::uint32_t a, std::uint32_t b) { return a == ~b; });
    }
};

} // namespace basbdtt
