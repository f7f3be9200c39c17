// The operators that combine and compare two columns word by word.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/function_clones.h"

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

/// A pair takes less than the call that compares longer columns.
bool equal_words(const words& first, const words& second)
{
    return first.size() == 2 ? basbdtt::load_pair(first.data()) == basbdtt::load_pair(second.data())
                             : std::equal(first.begin(), first.end(), second.begin());
}

/// Apart, so that columns of one length do not save registers for it.
[[gnu::noinline]] bool equal_padded(const words& shorter, const words& longer)
{
    return std::equal(shorter.begin(), shorter.end(), longer.begin()) &&
           basbdtt::all_zero(longer, shorter.size());
}

} // namespace

bool TRUTH_TABLE_VAL::operator==(const TRUTH_TABLE_VAL& other) const
{
    const std::size_t size = words.size();
    const std::size_t other_size = other.words.size();
    return size == other_size  ? equal_words(words, other.words)
           : size < other_size ? equal_padded(words, other.words)
                               : equal_padded(other.words, words);
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
