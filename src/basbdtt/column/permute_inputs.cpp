// The permutation of all inputs: of a column that is one pair at most, and of a short one.
#include "basbdtt/column/canonical.h"
#include "basbdtt/column/input_exchange.h"

#include <algorithm>
#include <utility>

namespace {

using namespace basbdtt;

/// @brief Permutes the inputs of a column of at most a pair.
///
/// Place by place, the input that belongs there changes places with the one that is there, without
/// a branch on where that is. The lists are bytes of a register: lists in memory would make each
/// place wait for the stores of the last.
std::uint64_t permuted_pair(std::uint64_t column, const int* perm, int width)
{
    constexpr int byte = 8;
    std::uint64_t target_at = std::uint64_t{0x050403020100} & ~std::uint64_t{0} << byte * width;
    std::uint64_t place_of = target_at; // the place of the input with each target
    for (int place = 0; place < width; ++place) {
        const auto target = static_cast<std::uint64_t>(perm[place]);
        target_at |= target << byte * place;
        place_of |= static_cast<std::uint64_t>(place) << byte * target;
    }
    for (unsigned place = 0; place + 1 < pair_inputs; ++place) {
        const std::uint64_t from = place_of >> byte * place & 0xFFU;
        const std::uint64_t moved = target_at >> byte * place & 0xFFU;
        target_at ^= (place ^ moved) << byte * from;
        place_of ^= (place ^ from) << byte * moved;
        const pair_exchange& inputs = pair_exchanges[place][from];
        delta_swap(column, inputs.mask, inputs.shift);
    }
    return column;
}

/// Each input changes places with the one that is where it belongs.
void permute_short(std::vector<std::uint32_t>& column, const int* perm, int width)
{
    std::array<int, short_inputs> target{};
    std::copy_n(perm, width, target.begin());
    for (int place = 0; place < width; ++place) {
        while (target[index(place)] != place) {
            const int there = target[index(place)];
            exchange_inputs(column.data(), column.size(), place, there);
            std::swap(target[index(place)], target[index(there)]);
        }
    }
}

/// For a column that is longer than a pair, or not as its width asks for.
[[gnu::noinline]] void permute_wide(BOOL_TRUTH_TABLE& table, int* perm)
{
    if (table.width <= short_inputs) {
        make_canonical(table.value, table.width);
        return table.width <= pair_inputs ? table.rotate_inputs(perm)
                                          : permute_short(table.value.words, perm, table.width);
    }
    permute_in_stages(table.value, perm, table.width);
}

} // namespace

void BOOL_TRUTH_TABLE::rotate_inputs(int* perm)
{
    require_column_width(width);
    std::uint32_t seen = 0;
    for (int i = 0; i < width; ++i) {
        basbd_require(perm[i] >= 0 && perm[i] < get_width() && (seen & (1U << perm[i])) == 0,
                      "perm[i]>=0 && perm[i]<get_width() && !(x & (1<<perm[i]))",
                      __PRETTY_FUNCTION__);
        seen |= 1U << perm[i];
    }
    if (!is_narrow(*this)) {
        return permute_wide(*this, perm);
    }
    change_narrow(*this, [&](std::uint64_t column) { return permuted_pair(column, perm, width); });
}
