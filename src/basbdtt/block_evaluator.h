/// @file
/// @brief Runs the steps of an equation on one block of the column at a time.
#pragma once

#include "equation_steps.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace basbdtt {

/// A block is 512 bytes, so that all registers in use lie in the first-level cache.
constexpr std::size_t words_per_block = std::size_t{1} << (block_inputs - pair_inputs);
using block = std::array<std::uint64_t, words_per_block>;

/// A block in memory, or where `memory` is null one of two words. Leaves are of the second kind, so
/// that the operations between them touch no memory.
struct block_value {
    const std::uint64_t* memory;
    two_words words;
};

/// @brief The registers for one block, and what runs the steps on them.
class block_evaluator {
public:
    /// @param words  words of a block that the column has
    explicit block_evaluator(std::size_t words);

    /// The result of the steps from `begin` on for a block; valid until the next run.
    const std::uint64_t* run(const step_list& list, std::size_t begin, std::size_t block_index);

private:
    const std::uint64_t* in_memory(const block_value& value, std::size_t place);
    block_value run_of(const step& step, const equation_leaf* leaves, std::size_t block_index,
                       std::size_t place);
    block_value join(const step& step, std::size_t place);
    block_value keep(const block_value& value, std::size_t place);

    std::size_t count; ///< words of a block that the column has, in whole groups
    std::array<block, max_values> registers;
    std::array<std::uint64_t*, max_values> storage;
    std::array<block_value, max_values> stack;
};

} // namespace basbdtt
