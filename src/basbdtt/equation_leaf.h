/// @file
/// @brief The functions that an equation's operators join in a few operations on words.
///
/// A column is a row of blocks of 4,096 entries, and a block a row of 64 words of 64 entries. A
/// leaf has one of two words in every place of some blocks and a constant in the others. Products
/// of literals, sums of literals and all functions of the lowest six inputs are leaves, so that of
/// an equation in one of the two normal forms only the outer operators are left.
#pragma once

#include "column_words.h"

#include <cstddef>
#include <cstdint>

namespace basbdtt {

/// Inputs below this one select an entry of a block.
constexpr int block_inputs = 12;

constexpr std::uint64_t all_ones = ~std::uint64_t{0};

/// The operators in the order of their ranks, the least binding first.
enum class operation : std::uint8_t { disjunction, exclusive, conjunction };
constexpr std::size_t operations = 3;

/// Calls `work` with the operation as a function that joins its second argument to its first, so
/// that each gets code of its own.
template <typename Work>
inline void with_operation(operation op, Work work)
{
    switch (op) {
    case operation::disjunction:
        return work([](auto& a, const auto& b) { a |= b; });
    case operation::exclusive:
        return work([](auto& a, const auto& b) { a ^= b; });
    case operation::conjunction:
        return work([](auto& a, const auto& b) { a &= b; });
    }
}

/// Both operands' entries joined.
inline std::uint64_t apply(operation op, std::uint64_t a, std::uint64_t b)
{
    with_operation(op, [&](auto assign) { assign(a, b); });
    return a;
}

/// The constant that decides an AND or OR alone, whatever the other operand.
constexpr std::uint64_t deciding(operation op)
{
    return op == operation::conjunction ? 0 : all_ones;
}

/// The constant that changes nothing.
constexpr std::uint64_t neutral(operation op)
{
    return op == operation::conjunction ? all_ones : 0;
}

constexpr bool is_constant(std::uint64_t word) { return word == 0 || word == all_ones; }

/// The block whose word i is `set` where bit i of `select` is set, and `clear` elsewhere.
struct two_words {
    std::uint64_t set;
    std::uint64_t clear;
    std::uint64_t select;

    static constexpr two_words uniform(std::uint64_t word) { return {word, word, 0}; }

    bool is_uniform() const { return set == clear; }
    two_words exchanged() const { return {clear, set, ~select}; }
    two_words complemented(std::uint64_t mask) const { return {set ^ mask, clear ^ mask, select}; }

    /// Whether the result has two words, too; only then is it stored.
    static bool join(operation op, two_words a, two_words b, two_words& result);
};

/// `block` in the blocks in which the inputs in `care`, counted from `block_inputs`, have their
/// `values`; `otherwise`, a constant, in all others.
struct equation_leaf {
    two_words block;
    std::uint64_t otherwise;
    std::uint32_t care;
    std::uint32_t values;

    static equation_leaf pattern(std::uint64_t word) { return {two_words::uniform(word), 0, 0, 0}; }
    /// An input from `pair_inputs` on.
    static equation_leaf of_input(int number);

    bool is_pattern() const { return care == 0 && block.is_uniform(); }
    bool is_constant() const { return is_pattern() && basbdtt::is_constant(block.set); }
    void complement()
    {
        block = block.complemented(all_ones);
        otherwise = ~otherwise;
    }

    /// The block in the place `index` of the column.
    two_words in_block(std::size_t index) const
    {
        const bool has_values = ((index ^ values) & care) == 0;
        return has_values ? block : two_words::uniform(otherwise);
    }
    /// The leaf where the input above `place` blocks has the value `one`.
    equation_leaf fixed(int place, bool one) const;

    /// Whether the result is a leaf, too; only then is it stored.
    static bool join(operation op, const equation_leaf& left, const equation_leaf& right,
                     equation_leaf& result);
};

} // namespace basbdtt
