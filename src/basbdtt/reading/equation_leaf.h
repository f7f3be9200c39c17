/// @file
/// @brief The functions that an equation's operators join in a few operations on words.
///
/// A column is a row of blocks of 4,096 entries, and a block a row of 64 words of 64 entries. A
/// leaf has one word in some places and another in all others. Literals, products and sums of
/// literals and all functions of the lowest six inputs are leaves, so that of an equation in one of
/// the two normal forms only the outer operators are left.
#pragma once

#include "basbdtt/reading/operation.h"

#include <cstddef>
#include <cstdint>

namespace basbdtt {

/// Inputs below this one select an entry of a block.
constexpr int block_inputs = 12;

/// Words of a block by `select`, in the blocks in which the inputs in `care`, counted from
/// `block_inputs`, have their `values`.
struct word_places {
    std::uint64_t select;
    std::uint32_t care;
    std::uint32_t values;

    static constexpr word_places everywhere() { return {all_ones, 0, 0}; }

    bool operator==(const word_places& other) const
    {
        return select == other.select && care == other.care && values == other.values;
    }
    bool is_everywhere() const { return select == all_ones && care == 0; }
    bool has_same_blocks(const word_places& other) const
    {
        return care == other.care && values == other.values;
    }
    word_places shared_with(const word_places& other) const
    {
        const bool apart = ((values ^ other.values) & care & other.care) != 0;
        return {apart ? 0 : select & other.select, care | other.care, values | other.values};
    }
    /// Takes the other places instead where these are places, too: those of one input or inside a
    /// block. Whether it did.
    bool try_complement();
};

/// `inside` in some places, `outside` in all others.
struct equation_leaf {
    std::uint64_t inside;
    std::uint64_t outside;
    word_places places;

    static constexpr equation_leaf pattern(std::uint64_t word)
    {
        return {word, word, word_places::everywhere()};
    }
    /// An input from `pair_inputs` on.
    static equation_leaf of_input(int number);

    bool is_pattern() const { return inside == outside; }
    void complement()
    {
        inside = ~inside;
        outside = ~outside;
    }

    /// The leaf in block `index` of the column.
    equation_leaf in_block(std::size_t index) const
    {
        if (((index ^ places.values) & places.care) != 0) {
            return pattern(outside);
        }
        return places.select == all_ones ? pattern(inside)
                                         : equation_leaf{inside, outside, {places.select, 0, 0}};
    }
    /// The leaf where an input, counted from `block_inputs`, has the value `one`.
    equation_leaf fixed(int high_input, bool one) const;

    /// Whether the result is a leaf, too; only then is it stored.
    static bool join(operation op, equation_leaf a, equation_leaf b, equation_leaf& result);

private:
    void try_outside(std::uint64_t word);
    /// A leaf of one word has it everywhere.
    void normalise();
};

} // namespace basbdtt
