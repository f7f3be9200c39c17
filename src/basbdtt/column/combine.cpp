// The operators that combine and compare two columns word by word.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/function_clones.h"

#include <algorithm>
#include <functional>

namespace {

using namespace basbdtt;

using words = std::vector<std::uint32_t>;

BASBDTT_CLONES void combine_longer(std::uint32_t* own, const std::uint32_t* other, std::size_t size,
                                   std::bit_xor<> operation)
{
    std::transform(own, own + size, other, own, operation);
}

BASBDTT_CLONES void combine_longer(std::uint32_t* own, const std::uint32_t* other, std::size_t size,
                                   std::bit_or<> operation)
{
    std::transform(own, own + size, other, own, operation);
}

BASBDTT_CLONES void combine_longer(std::uint32_t* own, const std::uint32_t* other, std::size_t size,
                                   std::bit_and<> operation)
{
    std::transform(own, own + size, other, own, operation);
}

/// Columns of one length; a word or a pair takes less than the call for longer ones.
template <typename operation_type>
void combine_equal(words& own, const words& other, operation_type operation)
{
    switch (other.size()) {
    case 1:
        own[0] = operation(own[0], other[0]);
        return;
    case 2:
        store_pair(own.data(), operation(load_pair(own.data()), load_pair(other.data())));
        return;
    default:
        combine_longer(own.data(), other.data(), other.size(), operation);
    }
}

/// The own column grows to the length of the other one; its words beyond that stay. Apart, so that
/// columns of one length do not save registers for it.
template <typename operation_type>
[[gnu::noinline]] void combine_unequal(words& own, const words& other, operation_type operation)
{
    if (own.size() < other.size()) {
        own.resize(other.size());
    }
    combine_longer(own.data(), other.data(), other.size(), operation);
}

template <typename operation_type>
void combine(words& own, const words& other, operation_type operation)
{
    if (own.size() == other.size()) {
        combine_equal(own, other, operation);
    } else {
        combine_unequal(own, other, operation);
    }
}

/// A pair takes less than the call that compares longer columns.
bool equal_words(const words& first, const words& second)
{
    return first.size() == 2 ? load_pair(first.data()) == load_pair(second.data())
                             : std::equal(first.begin(), first.end(), second.begin());
}

/// Apart, so that columns of one length do not save registers for it.
[[gnu::noinline]] bool equal_padded(const words& shorter, const words& longer)
{
    return std::equal(shorter.begin(), shorter.end(), longer.begin()) &&
           all_zero(longer, shorter.size());
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
    combine(words, other.words, std::bit_xor<>());
}

void TRUTH_TABLE_VAL::operator|=(const TRUTH_TABLE_VAL& other)
{
    combine(words, other.words, std::bit_or<>());
}

void TRUTH_TABLE_VAL::operator&=(const TRUTH_TABLE_VAL& other)
{
    combine(words, other.words, std::bit_and<>());
    if (words.size() > other.words.size()) {
        std::fill(words.begin() + static_cast<std::ptrdiff_t>(other.words.size()), words.end(), 0U);
    }
}
