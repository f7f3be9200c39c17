#include "function_set.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace basbdcells {

namespace {

constexpr std::size_t word_bits = 32;

/// A column of `width` inputs with `value` as its block number `place`.
TRUTH_TABLE_VAL at_block(const TRUTH_TABLE_VAL& value, std::size_t place, int width)
{
    TRUTH_TABLE_VAL column(width, 0);
    const std::size_t first = place * static_cast<std::size_t>(value.bit_count);
    for (std::size_t i = 0; i < value.words.size(); ++i) {
        column.words[first / word_bits + i] = value.words[i] << first % word_bits;
    }
    return column;
}

/// Removes the inputs below `count` that the function does not depend on, but for the last input
/// of all. @return the numbers of the others
std::vector<int> reduce(BOOL_TRUTH_TABLE& table, int count)
{
    std::vector<int> support(static_cast<std::size_t>(count));
    std::iota(support.begin(), support.end(), 0);
    for (int i = count - 1; i >= 0; --i) {
        BOOL_TRUTH_TABLE low = table.get_false_factor_for_input(i);
        if (low.value == table.get_true_factor_for_input(i).value) {
            support.erase(support.begin() + i);
            if (i > 0 || !support.empty()) {
                table = std::move(low);
            }
        }
    }
    return support;
}

} // namespace

function_set::function_set(const std::vector<BOOL_TRUTH_TABLE>& functions)
{
    basbd_require(!functions.empty() && functions.size() <= max_functions,
                  "!functions.empty() && functions.size() <= max_functions", __PRETTY_FUNCTION__);
    const int inputs = functions.front().get_width();
    basbd_require(inputs >= 1 && inputs <= static_cast<int>(max_inputs),
                  "inputs >= 1 && inputs <= max_inputs", __PRETTY_FUNCTION__);
    for (const BOOL_TRUTH_TABLE& each : functions) {
        basbd_require(each.get_width() == inputs, "each.get_width() == inputs",
                      __PRETTY_FUNCTION__);
    }
    state made;
    made.functions = functions.size();
    while (std::size_t{1} << static_cast<unsigned>(made.selectors) < functions.size()) {
        ++made.selectors;
    }
    TRUTH_TABLE_VAL column(inputs + made.selectors, 0);
    for (std::size_t i = 0; i < functions.size(); ++i) {
        column |= at_block(functions[i].value, i, inputs + made.selectors);
    }
    made.table.set_value(inputs + made.selectors, column);
    made.support = reduce(made.table, inputs);
    made.width = made.table.get_width() - made.selectors;
    for (std::size_t i = 0; i < functions.size(); ++i) {
        made.blocks.push_back(at_block({made.width, 1}, i, made.table.get_width()));
    }
    shared = std::make_shared<const state>(std::move(made));
}

std::size_t function_set::size() const { return shared->functions; }

const std::vector<int>& function_set::support() const { return shared->support; }

BOOL_TRUTH_TABLE repeated(BOOL_TRUTH_TABLE table, int width)
{
    for (int wider = table.get_width() + 1; wider <= width; ++wider) {
        TRUTH_TABLE_VAL column = at_block(table.value, 0, wider);
        column |= at_block(table.value, 1, wider);
        table.set_value(wider, column);
    }
    return table;
}

BOOL_TRUTH_TABLE function_set::state::with_complements(unsigned complemented) const
{
    BOOL_TRUTH_TABLE changed = table;
    for (std::size_t i = 0; i < functions; ++i) {
        if ((complemented >> i & 1U) != 0) {
            changed.value ^= blocks[i];
        }
    }
    return changed;
}

} // namespace basbdcells
