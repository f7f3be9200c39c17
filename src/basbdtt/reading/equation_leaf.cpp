// The joins of leaves: the cases whose result is a leaf again.
#include "basbdtt/reading/equation_leaf.h"

#include "basbdtt/column/bit_positions.h"

#include <utility>

namespace basbdtt {

bool word_places::try_complement()
{
    if (care == 0) {
        select = ~select;
        return true;
    }
    if (select == all_ones && (care & (care - 1)) == 0) {
        values ^= care;
        return true;
    }
    return false;
}

equation_leaf equation_leaf::of_input(int number)
{
    if (number < block_inputs) {
        // The words of a block are numbered as the entries of a word are.
        return {all_ones, 0, {pair_projection_mask[index(number - pair_inputs)], 0, 0}};
    }
    const std::uint32_t bit = std::uint32_t{1} << (number - block_inputs);
    return {all_ones, 0, {all_ones, bit, bit}};
}

equation_leaf equation_leaf::fixed(int high_input, bool one) const
{
    const std::uint32_t bit = std::uint32_t{1} << high_input;
    if ((places.care & bit) == 0) {
        return *this;
    }
    if (((places.values & bit) != 0) != one) {
        return pattern(outside);
    }
    equation_leaf result = {
        inside, outside, {places.select, places.care & ~bit, places.values & ~bit}};
    result.normalise();
    return result;
}

/// Exchanges inside and outside where `word` stands inside and the places allow it.
void equation_leaf::try_outside(std::uint64_t word)
{
    if (outside != word && inside == word && places.try_complement()) {
        std::swap(inside, outside);
    }
}

void equation_leaf::normalise()
{
    if (inside == outside || places.select == 0) {
        *this = pattern(outside);
    } else if (places.is_everywhere()) {
        *this = pattern(inside);
    }
}

bool equation_leaf::join(operation op, equation_leaf a, equation_leaf b, equation_leaf& result)
{
    if (a.is_pattern()) {
        a.places = b.places;
    } else if (b.is_pattern()) {
        b.places = a.places;
    }
    if (a.places == b.places) {
        result = {apply(op, a.inside, b.inside), apply(op, a.outside, b.outside), a.places};
    } else if (op == operation::exclusive) {
        const std::uint64_t difference = a.inside ^ a.outside;
        if (difference != (b.inside ^ b.outside) || !a.places.has_same_blocks(b.places)) {
            return false;
        }
        result.outside = a.outside ^ b.outside;
        result.inside = result.outside ^ difference;
        result.places = a.places;
        result.places.select ^= b.places.select;
    } else {
        a.try_outside(deciding(op));
        b.try_outside(deciding(op));
        if (a.outside != deciding(op) || b.outside != deciding(op)) {
            return false;
        }
        result = {apply(op, a.inside, b.inside), deciding(op), a.places.shared_with(b.places)};
    }
    result.normalise();
    return true;
}

} // namespace basbdtt
