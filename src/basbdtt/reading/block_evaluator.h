/// @file
/// @brief Runs the steps of a value for one block of the column at a time.
#pragma once

#include "basbdtt/reading/equation_program.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace basbdtt {

/// A block is 512 bytes, so that all that are in use lie in the first-level cache.
constexpr std::size_t words_per_block = std::size_t{1} << (block_inputs - pair_inputs);
using block = std::array<std::uint64_t, words_per_block>;

/// @brief The stack of values for one block, and what runs the steps on it.
class block_evaluator {
public:
    /// A block in memory or, where `memory` is null, a leaf without inputs above the block: between
    /// leaves, operations touch no memory.
    struct block_value {
        const std::uint64_t* memory;
        equation_leaf leaf;
    };

    /// @param words  words of a block that the column has
    explicit block_evaluator(std::size_t words);

    /// The value of the steps for a block; valid until the next run.
    block_value run(const std::vector<step>& steps, const step_list& value, std::size_t index);

    /// The same in memory.
    const std::uint64_t* in_memory(const block_value& value);

private:
    std::size_t add(const std::vector<step>& steps, std::size_t first, std::size_t last,
                    std::size_t index);
    void join(const step& step);
    void begin(operation op);
    void put(const equation_leaf& leaf);
    void put(const std::uint64_t* words);
    void end(bool complement, bool is_in_place);
    void store(std::uint64_t complement);

    std::size_t count;   ///< words of a block, in whole groups
    std::size_t top = 0; ///< the number of the topmost value
    std::array<block_value, max_values> stack;
    std::array<block, max_values> registers; ///< for the value of the same number

    // What is being joined to the topmost value.
    operation op = {};
    std::uint64_t uniform = 0; ///< all leaves of one word
    std::size_t leaf_count = 0;
    std::array<equation_leaf, 32> leaves;
};

} // namespace basbdtt
