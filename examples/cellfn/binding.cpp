#include "binding.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace cellfn {

reduced_function::reduced_function(BOOL_TRUTH_TABLE function)
    : table(std::move(function)), inputs(static_cast<std::size_t>(table.get_width()))
{
    std::iota(inputs.begin(), inputs.end(), 0);
    for (int i = table.get_width() - 1; i >= 0; --i) {
        BOOL_TRUTH_TABLE low = table.get_false_factor_for_input(i);
        if (low.value == table.get_true_factor_for_input(i).value) {
            inputs.erase(inputs.begin() + i);
            if (table.get_width() > 1) {
                table = std::move(low);
            }
        }
    }
}

bool holds(const binding& connection, BOOL_TRUTH_TABLE cell, const BOOL_TRUTH_TABLE& target)
{
    for (std::size_t pin = 0; pin < connection.input.size(); ++pin) {
        if (connection.inverted[pin]) {
            cell.invert_input(static_cast<int>(pin));
        }
    }
    if (!connection.input.empty()) {
        std::vector<int> places = connection.input;
        cell.rotate_inputs(places.data());
    }
    if (connection.output_inverted) {
        complement(cell);
    }
    return cell.get_width() == target.get_width() && cell.value == target.value;
}

void complement(BOOL_TRUTH_TABLE& table) { table.value ^= TRUTH_TABLE_VAL(table.get_width(), 1); }

} // namespace cellfn
