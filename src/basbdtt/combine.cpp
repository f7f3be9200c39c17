/// @file
/// @brief The operators that combine and compare two columns word by word.
#include "basbdtt.h"

#include <algorithm>
#include <functional>

namespace {

using words = std::vector<std::uint32_t>;

/// Combines `other` into the words that both have, after growing to its length.
template <typename Operation>
void combine(words& own, const words& other, Operation operation)
{
    if (own.size() < other.size()) {
        own.resize(other.size());
    }
    std::transform(other.begin(), other.end(), own.begin(), own.begin(), operation);
}

bool all_zero(words::const_iterator first, words::const_iterator last)
{
    return std::all_of(first, last, [](std::uint32_t word) { return word == 0; });
}

} // namespace

bool TRUTH_TABLE_VAL::operator==(const TRUTH_TABLE_VAL& other) const
{
    if (words.size() == other.words.size()) {
        return words == other.words;
    }
    const auto common = static_cast<std::ptrdiff_t>(std::min(words.size(), other.words.size()));
    return std::equal(words.begin(), words.begin() + common, other.words.begin()) &&
           all_zero(words.begin() + common, words.end()) &&
           all_zero(other.words.begin() + common, other.words.end());
}

void TRUTH_TABLE_VAL::operator^=(const TRUTH_TABLE_VAL& other)
{
    combine(words, other.words, std::bit_xor<>());
}

void TRUTH_TABLE_VAL::operator|=(const TRUTH_TABLE_VAL& other)
{
    combine(words, other.words, std::bit_or<>());
}

void TRUTH_TABLE_VAL::operator&=(const TRUTH_TABLE_VAL& other)
{
    combine(words, other.words, std::bit_and<>());
    std::fill(words.begin() + static_cast<std::ptrdiff_t>(other.words.size()), words.end(), 0U);
}
