/// @file
/// @brief The joins of leaves: the cases whose result is a leaf again.
#include "equation_leaf.h"

namespace basbdtt {

bool two_words::join(operation op, two_words a, two_words b, two_words& result)
{
    if (b.is_uniform()) {
        b.select = a.select;
    } else if (a.is_uniform()) {
        a.select = b.select;
    }
    if (a.select == b.select) {
        result = {apply(op, a.set, b.set), apply(op, a.clear, b.clear), a.select};
    } else if (op == operation::exclusive) {
        const std::uint64_t difference = a.set ^ a.clear;
        if (difference != (b.set ^ b.clear)) {
            return false;
        }
        const std::uint64_t clear = a.clear ^ b.clear;
        result = {clear ^ difference, clear, a.select ^ b.select};
    } else {
        const std::uint64_t decides = deciding(op);
        a = a.set == decides ? a.exchanged() : a;
        b = b.set == decides ? b.exchanged() : b;
        if (a.clear != decides || b.clear != decides) {
            return false;
        }
        result = {apply(op, a.set, b.set), decides, a.select & b.select};
    }
    if (is_constant(result.select)) {
        result = uniform(result.select == 0 ? result.clear : result.set);
    }
    return true;
}

equation_leaf equation_leaf::of_input(int number)
{
    const auto place = static_cast<std::size_t>(number);
    if (number < block_inputs) {
        return {{all_ones, 0, pair_projection_mask[place - pair_inputs]}, 0, 0, 0};
    }
    const std::uint32_t bit = std::uint32_t{1} << (number - block_inputs);
    return {two_words::uniform(all_ones), 0, bit, bit};
}

equation_leaf equation_leaf::fixed(int place, bool one) const
{
    const std::uint32_t bit = std::uint32_t{1} << place;
    if ((care & bit) == 0) {
        return *this;
    }
    if (((values & bit) != 0) != one) {
        return pattern(otherwise);
    }
    return {block, otherwise, care & ~bit, values & ~bit};
}

namespace {

/// `leaf` so that it has `constant` outside of its blocks, where it can be written so: a literal
/// can be told from either side.
equation_leaf oriented(equation_leaf leaf, std::uint64_t constant)
{
    const bool has_one_input = leaf.care != 0 && (leaf.care & (leaf.care - 1)) == 0;
    if (leaf.otherwise != constant && has_one_input && leaf.block.is_uniform() &&
        leaf.block.set == constant) {
        leaf.block = two_words::uniform(leaf.otherwise);
        leaf.otherwise = constant;
        leaf.values ^= leaf.care;
    }
    return leaf;
}

} // namespace

bool equation_leaf::join(operation op, const equation_leaf& left, const equation_leaf& right,
                         equation_leaf& result)
{
    const std::uint64_t decides = deciding(op);
    const equation_leaf a = oriented(left, decides);
    const equation_leaf b = oriented(right, decides);
    const auto decides_elsewhere = [=](const equation_leaf& leaf) {
        return leaf.care == 0 || leaf.otherwise == decides;
    };
    equation_leaf joined{};
    joined.care = a.care | b.care;
    joined.values = a.values | b.values;
    if (a.care == b.care && a.values == b.values) {
        joined.otherwise = apply(op, a.otherwise, b.otherwise);
    } else if (b.is_constant()) {
        joined.otherwise = apply(op, a.otherwise, b.block.set);
    } else if (a.is_constant()) {
        joined.otherwise = apply(op, a.block.set, b.otherwise);
    } else if (op != operation::exclusive && decides_elsewhere(a) && decides_elsewhere(b)) {
        joined.otherwise = decides;
        if (((a.values ^ b.values) & a.care & b.care) != 0) {
            result = pattern(joined.otherwise);
            return true;
        }
    } else {
        return false;
    }
    if (!two_words::join(op, a.block, b.block, joined.block)) {
        return false;
    }
    if (joined.block.is_uniform() && joined.block.set == joined.otherwise) {
        joined.care = 0;
        joined.values = 0;
    }
    result = joined;
    return true;
}

} // namespace basbdtt
