/// @file
/// @brief What a piece of an equation has come to.
#pragma once

#include "basbdtt/reading/operation.h"

#include <cstddef>
#include <cstdint>

namespace basbdtt {

/// Why an equation is refused.
enum class refusal : std::uint8_t {
    unexpected_element, ///< detail: the character
    unbalanced,
    no_element,
    blank_operand,
    bare_input_name,
    input_beyond_width, ///< detail: the input
    letter_beyond_width ///< the same, of an equation that names inputs by letters
};

/// The steps of a program that make a value: a list by its ends.
struct step_list {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t inputs; ///< from `block_inputs` on that the value may depend on
    std::uint8_t values;  ///< that the evaluation has at a time, at most
    std::uint8_t chain;   ///< a bit for each operation by which the leaves and blocks may be added
                          ///< to another value one by one

    bool is_one_step() const { return first == last; }
    bool is_chain(operation op) const { return (chain >> static_cast<unsigned>(op) & 1U) != 0; }
};

/// @brief The value of a piece of an equation: a function of the lowest six inputs by its 64
/// entries, or steps.
///
/// A refused piece stands for its value, so that it is dropped wherever the value would be. Two
/// words, which are passed in registers.
class operand {
public:
    constexpr operand() = default;
    static constexpr operand pattern(std::uint64_t entries) { return {kind_pattern, entries}; }
    static constexpr operand constant(bool one) { return pattern(one ? all_ones : 0); }
    static constexpr operand refused(refusal why, std::uint64_t detail = 0)
    {
        return {kind_refused | std::uint64_t{static_cast<std::uint8_t>(why)} << 8U, detail};
    }
    constexpr operand(const step_list& steps) // NOLINT(google-explicit-constructor): a kind of it
        : head(kind_steps | std::uint64_t{steps.chain} << 8U | std::uint64_t{steps.values} << 16U |
               std::uint64_t{steps.inputs} << 32U),
          payload(steps.first | std::uint64_t{steps.last} << 32U)
    {
    }

    constexpr bool is_pattern() const { return head == kind_pattern; }
    constexpr bool is_pattern(std::uint64_t entries) const
    {
        return is_pattern() && payload == entries;
    }
    constexpr bool is_refused() const { return (head & kind_mask) == kind_refused; }

    /// Of a pattern.
    constexpr std::uint64_t entries() const { return payload; }
    /// Of a refused piece.
    constexpr refusal why() const { return static_cast<refusal>(head >> 8U); }
    constexpr std::uint64_t detail() const { return payload; }
    /// Of steps.
    constexpr step_list steps() const
    {
        return {static_cast<std::uint32_t>(payload), static_cast<std::uint32_t>(payload >> 32U),
                inputs(), static_cast<std::uint8_t>(head >> 16U),
                static_cast<std::uint8_t>(head >> 8U)};
    }
    /// Of steps and patterns.
    constexpr std::uint32_t inputs() const { return static_cast<std::uint32_t>(head >> 32U); }

private:
    static constexpr std::uint64_t kind_pattern = 0;
    static constexpr std::uint64_t kind_steps = 1;
    static constexpr std::uint64_t kind_refused = 2;
    static constexpr std::uint64_t kind_mask = 3;

    constexpr operand(std::uint64_t first_word, std::uint64_t second_word)
        : head(first_word), payload(second_word)
    {
    }

    /// From the lowest bit: 8 for the kind, 8 for the reason or the chain, 8 for the values, and
    /// from bit 32 on the inputs.
    std::uint64_t head = kind_pattern;
    std::uint64_t payload = 0;
};

} // namespace basbdtt
