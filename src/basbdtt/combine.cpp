/// @file
/// @brief The operators that combine and compare two columns word by word.
#include "basbdtt.h"
#include "function_clones.h"

#include <algorithm>
#include <functional>

namespace {

using words = std::vector<std::uint32_t>;

BASBDTT_CLONES void xor_words(std::uint32_t* own, const std::uint32_t* other, std::size_t size)
{
    std::transform(own, own + size, other, own, std::bit_xor<>());
}

BASBDTT_CLONES void or_words(std::uint32_t* own, const std::uint32_t* other, std::size_t size)
{
    std::transform(own, own + size, other, own, std::bit_or<>());
}

BASBDTT_CLONES void and_words(std::uint32_t* own, const std::uint32_t* other, std::size_t size)
{
    std::transform(own, own + size, other, own, std::bit_and<>());
}

void grow(words& own, const words& other)
{
    if (own.size() < other.size()) {
        own.resize(other.size());
    }
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
    grow(words, other.words);
    xor_words(words.data(), other.words.data(), other.words.size());
}

void TRUTH_TABLE_VAL::operator|=(const TRUTH_TABLE_VAL& other)
{
    grow(words, other.words);
    or_words(words.data(), other.words.data(), other.words.size());
}

void TRUTH_TABLE_VAL::operator&=(const TRUTH_TABLE_VAL& other)
{
    grow(words, other.words);
    and_words(words.data(), other.words.data(), other.words.size());
    std::fill(words.begin() + static_cast<std::ptrdiff_t>(other.words.size()), words.end(), 0U);
}
