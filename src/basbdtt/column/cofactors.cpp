// The two Shannon cofactors for an input.
#include "basbdtt/column/bit_positions.h"
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/function_clones.h"
#include "basbdtt/column/word_groups.h"

#include <algorithm>

namespace {

using namespace basbdtt;

using words = std::vector<std::uint32_t>;

/// Words of the result that are made at a time: a vector clears them first, and they are still in
/// the nearest cache when they get their values.
constexpr std::size_t piece_words = 1024;

/// A table up to this length is copied and then halved, which saves an allocation.
constexpr std::size_t short_half_words = 32;

/// @brief The entries of `lane` where `input` is 0, moved together into its low half.
///
/// The input selects a bit inside a lane, so a lane of the column makes half a lane of the result.
template <int input, typename lane_type>
constexpr lane_type compacted(lane_type lane)
{
    constexpr auto masks = make_projection_masks<lane_type>();
    lane = static_cast<lane_type>(lane & ~masks[input]);
    for (std::size_t i = input; i + 1 < masks.size(); ++i) {
        lane = static_cast<lane_type>((lane | (lane >> (1U << i))) & ~masks[i + 1]);
    }
    return lane;
}

/// `size` words of the result from twice as many of the column.
template <int input, bool high, typename lane_type, typename half_type>
void compact_lanes(const std::uint32_t* column, std::uint32_t* result, std::size_t size)
{
    const auto* const source = reinterpret_cast<const unsigned char*>(column);
    auto* const target = reinterpret_cast<unsigned char*>(result);
    const std::size_t lanes = size * sizeof(std::uint32_t) / sizeof(half_type);
    for (std::size_t i = 0; i < lanes; ++i) {
        lane_type lane = 0;
        std::memcpy(&lane, source + i * sizeof(lane_type), sizeof(lane_type));
        lane = static_cast<lane_type>(lane >> (high ? 1U << input : 0U));
        const auto half = static_cast<half_type>(compacted<input>(lane));
        std::memcpy(target + i * sizeof(half_type), &half, sizeof(half_type));
    }
}

/// For an input inside a pair. The narrowest lanes that hold both values make the fewest moves.
template <bool high>
void compact(const std::uint32_t* column, std::uint32_t* result, std::size_t size, int input)
{
    with_pair_input(input, [=](auto constant) {
        if constexpr (constant < 4) {
            compact_lanes<constant, high, std::uint16_t, std::uint8_t>(column, result, size);
        } else if constexpr (constant == 4) {
            compact_lanes<constant, high, std::uint32_t, std::uint16_t>(column, result, size);
        } else {
            compact_lanes<constant, high, std::uint64_t, std::uint32_t>(column, result, size);
        }
    });
}

/// For an input that selects a block of at least a pair.
void select_blocks(const std::uint32_t* column, std::uint32_t* result, std::size_t size,
                   std::size_t block)
{
    with_group(block, [=](auto kind) {
        typename decltype(kind)::type group;
        for (std::size_t start = 0; start < size; start += block) {
            for (std::size_t i = start; i < start + block; i += group_words<decltype(group)>) {
                load_group(group, column + start + i);
                store_group(result + i, group);
            }
        }
    });
}

/// `size` words of the cofactor from twice as many of the column.
BASBDTT_CLONES void halve(const std::uint32_t* column, std::uint32_t* result, std::size_t size,
                          int input, bool high)
{
    if (input >= pair_inputs) {
        const std::size_t block = block_words(input);
        select_blocks(high ? column + block : column, result, size, block);
    } else if (high) {
        compact<true>(column, result, size, input);
    } else {
        compact<false>(column, result, size, input);
    }
}

words halved(const words& column, int input, bool high)
{
    const std::size_t size = column.size() / 2;
    words result;
    result.reserve(size);
    if (input >= pair_inputs && block_words(input) >= piece_words) {
        const std::size_t block = block_words(input);
        for (std::size_t start = high ? block : 0; start < 2 * size; start += 2 * block) {
            result.insert(result.end(), column.data() + start, column.data() + start + block);
        }
        return result;
    }
    for (std::size_t start = 0; start < size; start += piece_words) {
        const std::size_t length = std::min(piece_words, size - start);
        result.resize(start + length);
        halve(column.data() + 2 * start, result.data() + start, length, input, high);
    }
    return result;
}

/// The cofactor of a table of at most one pair of words.
BOOL_TRUTH_TABLE narrow_cofactor(const BOOL_TRUTH_TABLE& table, int input, bool high)
{
    const std::uint64_t column = load_narrow(table.value.words.data(), table.width);
    BOOL_TRUTH_TABLE half;
    half.width = static_cast<signed char>(table.width - 1);
    half.value.bit_count = std::int32_t{1} << half.width;
    with_pair_input(input, [&](auto constant) {
        half.value.words[0] = static_cast<std::uint32_t>(
                                  compacted<constant>(high ? column >> (1U << constant) : column)) &
                              last_word_mask(half.width);
    });
    return half;
}

/// The cofactor of a longer table; apart, so that narrow ones do not save registers for it.
[[gnu::noinline]] BOOL_TRUTH_TABLE wide_cofactor(const BOOL_TRUTH_TABLE& table, int input,
                                                 bool high)
{
    const words& column = table.value.words;
    const std::size_t size = column.size() / 2;
    const bool is_short = size <= short_half_words;
    BOOL_TRUTH_TABLE half = is_short ? table : BOOL_TRUTH_TABLE();
    if (is_short) {
        half.value.words.resize(size);
        halve(column.data(), half.value.words.data(), size, input, high);
    } else {
        half.value.words = halved(column, input, high);
    }
    half.width = static_cast<signed char>(table.width - 1);
    half.value.bit_count = std::int32_t{1} << half.width;
    return half;
}

/// The cofactor of a table whose column is not as long as its width asks for.
[[gnu::noinline, gnu::cold]] BOOL_TRUTH_TABLE canonical_cofactor(BOOL_TRUTH_TABLE table, int input,
                                                                 bool high)
{
    make_canonical(table.value, table.width);
    return high ? table.get_true_factor_for_input(input) : table.get_false_factor_for_input(input);
}

BOOL_TRUTH_TABLE cofactor(const BOOL_TRUTH_TABLE& table, int input, bool high)
{
    return is_narrow(table) ? narrow_cofactor(table, input, high)
           : is_wide(table) ? wide_cofactor(table, input, high)
                            : canonical_cofactor(table, input, high);
}

} // namespace

BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_true_factor_for_input(int input) const
{
    basbd_require(input >= 0 && input < get_width() && get_width() > 0,
                  "input>=0 && input<get_width() && get_width()>0", __PRETTY_FUNCTION__);
    return cofactor(*this, input, true);
}

BOOL_TRUTH_TABLE BOOL_TRUTH_TABLE::get_false_factor_for_input(int input) const
{
    basbd_require(input >= 0 && input < get_width() && get_width() > 0,
                  "input>=0 && input<get_width() && get_width()>0", __PRETTY_FUNCTION__);
    return cofactor(*this, input, false);
}
