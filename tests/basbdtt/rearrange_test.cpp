// Every rearrangement against the same steps taken entry by entry.
#include "basbdtt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

namespace {

constexpr unsigned seed = 20240611;
using entry_map = std::function<std::size_t(std::size_t)>;

bool entry(const BOOL_TRUTH_TABLE& table, std::size_t x)
{
    const auto& words = table.value.words;
    return x / 32 < words.size() && (words[x / 32] >> (x % 32) & 1U) != 0;
}

/// The table of `width` inputs whose entry x is entry source(x) of `old`.
BOOL_TRUTH_TABLE gathered(const BOOL_TRUTH_TABLE& old, int width, const entry_map& source)
{
    BOOL_TRUTH_TABLE result;
    result.width = static_cast<signed char>(width);
    result.value.bit_count = 1 << width;
    result.value.words.assign(((std::size_t{1} << width) + 31) / 32, 0);
    for (std::size_t x = 0; x < std::size_t{1} << width; ++x) {
        result.value.words[x / 32] |= (entry(old, source(x)) ? 1U : 0U) << (x % 32);
    }
    return result;
}

void expect_same(const BOOL_TRUTH_TABLE& got, const BOOL_TRUTH_TABLE& expected, const char* what)
{
    ASSERT_EQ(got.width, expected.width) << what << ", seed " << seed;
    ASSERT_EQ(got.value.bit_count, expected.value.bit_count) << what << ", seed " << seed;
    ASSERT_EQ(got.value.words, expected.value.words) << what << ", seed " << seed;
}

void check_permutation(const BOOL_TRUTH_TABLE& table, std::vector<int> perm)
{
    BOOL_TRUTH_TABLE permuted = table;
    permuted.rotate_inputs(perm.data());
    const entry_map source = [&](std::size_t y) {
        std::size_t x = 0;
        for (std::size_t j = 0; j < perm.size(); ++j) {
            x |= (y >> perm[j] & 1U) << j;
        }
        return x;
    };
    expect_same(permuted, gathered(table, table.width, source), "rotate_inputs(perm)");
}

void check_one_input(const BOOL_TRUTH_TABLE& table, int input)
{
    const int width = table.get_width();
    const std::size_t bit = std::size_t{1} << input;
    BOOL_TRUTH_TABLE inverted = table;
    inverted.invert_input(input);
    expect_same(inverted, gathered(table, width, [&](auto x) { return x ^ bit; }), "invert_input");
    const entry_map low = [&](auto k) { return (k & (bit - 1)) | (k & ~(bit - 1)) << 1; };
    expect_same(table.get_false_factor_for_input(input), gathered(table, width - 1, low), "false");
    const entry_map high = [&](auto k) { return low(k) | bit; };
    expect_same(table.get_true_factor_for_input(input), gathered(table, width - 1, high), "true");
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
    for (int i = 0; i < width; ++i) {
        check_one_input(table, i);
        for (int j = 0; j < width; ++j) {
            std::iota(perm.begin(), perm.end(), 0);
            std::swap(perm[static_cast<std::size_t>(i)], perm[static_cast<std::size_t>(j)]);
            BOOL_TRUTH_TABLE exchanged = table;
            exchanged.rotate_inputs(i, j);
            BOOL_TRUTH_TABLE permuted = table;
            permuted.rotate_inputs(perm.data());
            expect_same(exchanged, i == j ? table : permuted, "rotate_inputs(i, j)");
            check_permutation(table, perm);
        }
    }
    std::iota(perm.begin(), perm.end(), 0);
    for (int round = 0; round < 24; ++round) {
        check_permutation(table, perm);
        if (width > 4) {
            std::shuffle(perm.begin(), perm.end(), random);
        } else if (!std::next_permutation(perm.begin(), perm.end())) {
            break;
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

TEST(Rearrange, EveryTableOfOneToThreeInputsAndManyOfFour)
{
    std::mt19937 random(seed);
    for (int width = 1; width <= 4; ++width) {
        const std::uint32_t step = width < 4 ? 1 : 13;
        for (std::uint32_t column = 0; column < 1U << (1 << width); column += step) {
            check_table(table_of(width, {column}), random);
        }
    }
}

TEST(Rearrange, RandomTablesAlsoOfUnusualLength)
{
    std::mt19937 random(seed);
    for (int width = 1; width <= 13; ++width) {
        const std::size_t size = width <= 5 ? 1 : std::size_t{1} << (width - 5);
        for (const std::size_t length : {size, size + 3, size / 2, std::size_t{0}}) {
            std::vector<std::uint32_t> words(length);
            std::generate(words.begin(), words.end(), std::ref(random)); // stray bits below width 5
            BOOL_TRUTH_TABLE table = table_of(width, words);
            table.value.bit_count = 7;
            check_table(table, random);
        }
    }
}

TEST(Rearrange, IdentityIsRecognisedUnlessOneEntryDiffers)
{
    std::mt19937 random(seed);
    for (int width = 1; width <= 17; ++width) {
        for (int input = 0; input < width; ++input) {
            BOOL_TRUTH_TABLE table;
            table.set_identity_for_input(width, input);
            const entry_map source = [&](auto x) { return x >> input & 1U; };
            expect_same(table, gathered(table_of(1, {2}), width, source), "identity");
            for (int other = 0; other < width; ++other) {
                ASSERT_EQ(table.is_identity_for_input(other), other == input);
            }
            const std::size_t x = random() % (std::size_t{1} << width);
            table.value.words[x / 32] ^= 1U << (x % 32);
            ASSERT_FALSE(table.is_identity_for_input(input)) << width << ", entry " << x;
        }
    }
}

} // namespace
