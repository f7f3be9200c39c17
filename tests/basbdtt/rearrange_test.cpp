// Every rearrangement against the same steps taken entry by entry.
#include "basbdtt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

constexpr unsigned seed = 20240611;

bool entry(const BOOL_TRUTH_TABLE& table, std::size_t x)
{
    const auto& words = table.value.words;
    return x / 32 < words.size() && (words[x / 32] >> (x % 32) & 1U) != 0;
}

/// Expects a table of `width` inputs whose entry x is entry source(x) of `old`.
template <typename source_type>
void expect_gathered(const BOOL_TRUTH_TABLE& got, const BOOL_TRUTH_TABLE& old, int width,
                     source_type source)
{
    std::vector<std::uint32_t> words(((std::size_t{1} << width) + 31) / 32);
    for (std::size_t x = 0; x < std::size_t{1} << width; ++x) {
        words[x / 32] |= (entry(old, source(x)) ? 1U : 0U) << (x % 32);
    }
    ASSERT_EQ(got.width, width) << "seed " << seed;
    ASSERT_EQ(got.value.bit_count, 1 << width) << "seed " << seed;
    ASSERT_EQ(got.value.words, words) << "seed " << seed;
}

void expect_permuted(const BOOL_TRUTH_TABLE& got, const BOOL_TRUTH_TABLE& old,
                     const std::vector<int>& perm)
{
    expect_gathered(got, old, old.width, [&](std::size_t y) {
        std::size_t x = 0;
        for (std::size_t j = 0; j < perm.size(); ++j) {
            x |= (y >> perm[j] & 1U) << j;
        }
        return x;
    });
}

void check_one_input(const BOOL_TRUTH_TABLE& table, int input)
{
    const int width = table.get_width();
    const std::size_t bit = std::size_t{1} << input;
    BOOL_TRUTH_TABLE inverted = table;
    inverted.invert_input(input);
    expect_gathered(inverted, table, width, [&](auto x) { return x ^ bit; });
    const auto low = [&](auto k) { return (k & (bit - 1)) | (k & ~(bit - 1)) << 1; };
    expect_gathered(table.get_false_factor_for_input(input), table, width - 1, low);
    expect_gathered(table.get_true_factor_for_input(input), table, width - 1,
                    [&](auto k) { return low(k) | bit; });
    bool identity = true;
    for (std::size_t x = 0; x < std::size_t{1} << width; ++x) {
        identity = identity && entry(table, x) == ((x & bit) != 0);
    }
    ASSERT_EQ(table.is_identity_for_input(input), identity);
}

void check_table(const BOOL_TRUTH_TABLE& table, std::mt19937& random)
{
    const int width = table.get_width();
    std::vector<int> perm(static_cast<std::size_t>(width));
    std::iota(perm.begin(), perm.end(), 0);
    for (int i = 0; i < width; ++i) {
        check_one_input(table, i);
        for (int j = 0; j < width; ++j) {
            BOOL_TRUTH_TABLE exchanged = table;
            exchanged.rotate_inputs(i, j);
            std::iter_swap(perm.begin() + i, perm.begin() + j);
            if (i == j) { // not even a column of other length changes
                ASSERT_EQ(exchanged.value.words, table.value.words);
                continue;
            }
            expect_permuted(exchanged, table, perm);
            std::iter_swap(perm.begin() + i, perm.begin() + j);
        }
    }
    const int rounds = width > 12 ? 100 : 24; // all permutations up to width 4
    for (int round = 0; round < rounds; ++round) {
        BOOL_TRUTH_TABLE permuted = table;
        permuted.rotate_inputs(perm.data());
        expect_permuted(permuted, table, perm);
        if (perm.size() > 4) {
            std::shuffle(perm.begin(), perm.end(), random);
        } else {
            std::next_permutation(perm.begin(), perm.end());
        }
    }
}

BOOL_TRUTH_TABLE table_of(int width, std::vector<std::uint32_t> words)
{
    BOOL_TRUTH_TABLE table;
    table.width = static_cast<signed char>(width);
    table.value.bit_count = 1 << width;
    table.value.words = std::move(words);
    return table;
}

TEST(rearrange, every_table_of_one_to_three_inputs_and_many_of_four)
{
    std::mt19937 random(seed);
    for (int width = 1; width <= 4; ++width) {
        for (unsigned column = 0; column < 1U << (1U << width); column += width < 4 ? 1 : 13) {
            check_table(table_of(width, {column}), random);
        }
    }
}

TEST(rearrange, random_tables_also_of_unusual_length)
{
    std::mt19937 random(seed);
    for (int width = 1; width <= 13; ++width) {
        const std::size_t size = width <= 5 ? 1 : std::size_t{1} << (width - 5);
        for (const std::size_t length : {size, size + 3, size / 2, std::size_t{0}}) {
            BOOL_TRUTH_TABLE table = table_of(width, std::vector<std::uint32_t>(length));
            for (std::uint32_t& word : table.value.words) {
                word = static_cast<std::uint32_t>(random()); // stray bits below width 5
            }
            table.value.bit_count = 7;
            check_table(table, random);
        }
    }
}

TEST(rearrange, identity_is_recognised_unless_one_entry_differs)
{
    std::mt19937 random(seed);
    BOOL_TRUTH_TABLE table; // which grows and shrinks
    for (int round = 1; round < 35; ++round) {
        const int width = std::min(round, 35 - round);
        for (int input = 0; input < width; ++input) {
            table.set_identity_for_input(width, input);
            expect_gathered(table, table_of(1, {2}), width,
                            [&](auto x) { return x >> input & 1U; });
            for (int other = 0; other < width; ++other) {
                ASSERT_EQ(table.is_identity_for_input(other), other == input);
            }
            if (width > 1) {
                const TRUTH_TABLE_VAL one(width - 1, 1);
                ASSERT_EQ(table.get_true_factor_for_input(input).value.words, one.words);
            }
            const std::size_t x = random() % (std::size_t{1} << width);
            table.value.words[x / 32] ^= 1U << (x % 32);
            ASSERT_FALSE(table.is_identity_for_input(input)) << width << ", entry " << x;
        }
    }
}

} // namespace
