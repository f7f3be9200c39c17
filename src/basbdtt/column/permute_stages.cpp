// The permutation of all inputs of a long column.
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/function_clones.h"
#include "basbdtt/column/input_exchange.h"
#include "basbdtt/column/word_groups.h"

#include <algorithm>
#include <utility>

namespace {

using namespace basbdtt;

/// One entry for each input, or for each input that selects a pair.
using input_list = std::array<int, BASBDTT_MAX_WIDTH>;

/// The exchange of an input inside a pair with one that selects a block.
struct crossing {
    crossing() = default;
    crossing(int inside, int outside)
        : low(inside), high(outside), mask(~pair_projection_mask[index(inside)]),
          shift(1 << inside), block(block_words(outside))
    {
    }
    int low;
    int high;
    std::uint64_t mask; ///< where the input inside the pair is 0
    int shift;
    std::size_t block;
};

/// Two crossings of four groups that lie `near` and `far` blocks apart.
template <typename group_type>
void cross_square(std::uint32_t* words, const crossing& near, const crossing& far)
{
    group_type low0;
    group_type low1;
    group_type high0;
    group_type high1;
    load_group(low0, words);
    load_group(low1, words + near.block);
    load_group(high0, words + far.block);
    load_group(high1, words + far.block + near.block);
    cross(low0, low1, near.mask, near.shift);
    cross(high0, high1, near.mask, near.shift);
    cross(low0, high0, far.mask, far.shift);
    cross(low1, high1, far.mask, far.shift);
    store_group(words, low0);
    store_group(words + near.block, low1);
    store_group(words + far.block, high0);
    store_group(words + far.block + near.block, high1);
}

/// Two crossings in one pass over the column; near.block < far.block.
BASBDTT_CLONES void cross_two(std::uint32_t* words, std::size_t size, crossing near, crossing far)
{
    with_group(near.block, [=](auto group) {
        using group_type = typename decltype(group)::type;
        for (std::size_t outer = 0; outer < size; outer += 2 * far.block) {
            for (std::size_t start = outer; start < outer + far.block; start += 2 * near.block) {
                for (std::size_t i = start; i < start + near.block; i += group_words<group_type>) {
                    cross_square<group_type>(words + i, near, far);
                }
            }
        }
    });
}

/// The exchanges inside a pair that together make one permutation.
class pair_permutation {
public:
    /// @param target  for each input inside a pair the place inside a pair that it goes to
    explicit pair_permutation(std::array<int, pair_inputs> target)
    {
        for (int i = 0; i < pair_inputs; ++i) {
            while (target[index(i)] != i) {
                const int there = target[index(i)];
                exchanges[count++] = pair_exchanges[index(i)][index(there)];
                std::swap(target[index(i)], target[index(there)]);
            }
        }
    }

    void apply(std::uint32_t* words, std::size_t size) const;

private:
    std::array<pair_exchange, pair_inputs - 1> exchanges{};
    std::size_t count = 0;
};

/// A fixed number of exchanges in one pass, so that all masks stay in registers.
template <std::size_t count>
inline void exchange_fused(std::uint32_t* words, std::size_t size, const pair_exchange* exchanges)
{
    std::array<pair_exchange, count> local{};
    std::copy_n(exchanges, count, local.begin());
    for (std::size_t i = 0; i < size; i += 2) {
        std::uint64_t pair = load_pair(words + i);
        for (const pair_exchange& each : local) {
            delta_swap(pair, each.mask, each.shift);
        }
        store_pair(words + i, pair);
    }
}

BASBDTT_CLONES void exchange_all(std::uint32_t* words, std::size_t size,
                                 const pair_exchange* exchanges, std::size_t count)
{
    switch (count) {
    case 0:
        return;
    case 1:
        return exchange_fused<1>(words, size, exchanges);
    case 2:
        return exchange_fused<2>(words, size, exchanges);
    case 3:
        return exchange_fused<3>(words, size, exchanges);
    case 4:
        return exchange_fused<4>(words, size, exchanges);
    default:
        return exchange_fused<5>(words, size, exchanges);
    }
}

void pair_permutation::apply(std::uint32_t* words, std::size_t size) const
{
    exchange_all(words, size, exchanges.data(), count);
}

/// @brief A count of binary digits that may have any weight and order.
///
/// Adding `step(c)` to a sum that starts at 0 walks through the values of the counter c + 1.
class weighted_counter {
public:
    void add_digit(std::size_t weight)
    {
        steps[digits++] = weight - sum;
        sum += weight;
    }
    std::size_t step(std::size_t count) const
    {
        return steps[static_cast<std::size_t>(__builtin_ctzll(count + 1))];
    }
    std::size_t count() const { return std::size_t{1} << digits; }

private:
    std::array<std::size_t, BASBDTT_MAX_WIDTH + 1> steps{};
    std::size_t digits = 0;
    std::size_t sum = 0;
};

/// @brief Permutes the inputs that select a pair.
///
/// The innermost loop takes 16 neighbours of the result. The next loops take the neighbours that
/// share a cache line of `source`, so that a line that was fetched is used up.
/// @param origin  for each bit of a pair's index in the result its bit in `source`
void gather_pairs(const std::uint32_t* source, std::uint32_t* result, int bits,
                  const input_list& origin)
{
    constexpr int inner_bits = 4;
    constexpr int line_bits = 3;
    static_assert(short_inputs - pair_inputs >= inner_bits, "there are as many bits");
    std::array<std::size_t, std::size_t{1} << inner_bits> offsets{};
    for (std::size_t i = 1; i < offsets.size(); ++i) {
        const int lowest = __builtin_ctzll(i);
        offsets[i] = offsets[i & (i - 1)] + (std::size_t{2} << origin[index(lowest)]);
    }
    weighted_counter from;
    weighted_counter to;
    for (const bool in_line : {true, false}) {
        for (int bit = inner_bits; bit < bits; ++bit) {
            if ((origin[index(bit)] < line_bits) == in_line) {
                from.add_digit(std::size_t{2} << origin[index(bit)]);
                to.add_digit(std::size_t{2} << bit);
            }
        }
    }
    for (std::size_t i = 0; i < to.count(); ++i) {
        for (std::size_t k = 0; k < offsets.size(); ++k) {
            store_pair(result + 2 * k, load_pair(source + offsets[k]));
        }
        source += from.step(i);
        result += to.step(i);
    }
}

/// @brief A permutation of all inputs in three stages.
///
/// The inputs that stay inside the pair are permuted there, those that stay outside by moving whole
/// pairs; the inputs that change sides are crossed last. Inside the pair, an input that leaves
/// waits where its own chain of moves began, which takes the fewest exchanges.
class staged_permutation {
public:
    /// @param perm  a permutation of 0 to width - 1; width > short_inputs
    staged_permutation(const int* perm, int width) : bits(width - pair_inputs)
    {
        input_list inverse{};
        for (int i = 0; i < width; ++i) {
            inverse[index(perm[i])] = i;
        }
        std::copy_n(perm, pair_inputs, inside.begin());
        for (int i = pair_inputs; i < width; ++i) {
            int before = inverse[index(i)];
            if (before < pair_inputs) {
                const int start = chain_start(before, inverse);
                inside[index(before)] = start;
                before = inverse[index(start)];
                crossings[crossing_count++] = crossing(start, i);
            }
            origin[index(i - pair_inputs)] = before - pair_inputs;
        }
    }

    /// The words that `apply` needs beside the column.
    std::size_t room() const { return moves_pairs() ? words_for_width(bits + pair_inputs) : 0; }

    /// @param result  `room` words, which may become those of the column
    void apply(std::vector<std::uint32_t>& column, std::vector<std::uint32_t> result) const
    {
        const std::size_t size = column.size();
        if (!result.empty()) {
            gather_pairs(column.data(), result.data(), bits, origin);
            column.swap(result);
        }
        pair_permutation(inside).apply(column.data(), size);
        std::size_t i = 0;
        for (; i + 1 < crossing_count; i += 2) {
            cross_two(column.data(), size, crossings[i], crossings[i + 1]);
        }
        if (i < crossing_count) {
            exchange_inputs(column.data(), size, crossings[i].low, crossings[i].high);
        }
    }

private:
    /// The first place on the chain of moves inside the pair that ends at `input`.
    static int chain_start(int input, const input_list& inverse)
    {
        while (inverse[index(input)] < pair_inputs) {
            input = inverse[index(input)];
        }
        return input;
    }

    bool moves_pairs() const
    {
        for (int i = 0; i < bits; ++i) {
            if (origin[index(i)] != i) {
                return true;
            }
        }
        return false;
    }

    int bits;                              ///< inputs that select a pair
    input_list origin{};                   ///< as `gather_pairs` takes it
    std::array<int, pair_inputs> inside{}; ///< as `pair_permutation` takes it
    std::array<crossing, pair_inputs> crossings;
    std::size_t crossing_count = 0;
};

} // namespace

void basbdtt::permute_in_stages(TRUTH_TABLE_VAL& value, const int* perm, int width)
{
    const staged_permutation permutation(perm, width);
    // Before the column changes: it fails, if at all, with nothing done.
    std::vector<std::uint32_t> result(permutation.room());
    make_canonical(value, width);
    permutation.apply(value.words, std::move(result));
}
