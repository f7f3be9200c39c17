#include "basbdcells/expression.h"

#include <algorithm>

namespace basbdcells {

BOOL_TRUTH_TABLE table_of(const expression& source)
{
    const int width = std::max(1, static_cast<int>(source.pins.size()));
    const TRUTH_TABLE_VAL one(width, 1);
    BOOL_TRUTH_TABLE table;
    const auto operand = [&](const step& each) {
        if (each.kind == step_kind::pin) {
            table.set_identity_for_input(width, static_cast<int>(each.pin));
            return table.value;
        }
        return TRUTH_TABLE_VAL(width, each.kind == step_kind::one ? 1 : 0);
    };
    const auto complement = [&](TRUTH_TABLE_VAL& value) { value ^= one; };
    const auto combine = [](step_kind kind, TRUTH_TABLE_VAL& left, const TRUTH_TABLE_VAL& right) {
        if (kind == step_kind::conjunction) {
            left &= right;
        } else if (kind == step_kind::exclusive) {
            left ^= right;
        } else {
            left |= right;
        }
    };
    table.set_value(width, evaluate(source, operand, complement, combine));
    return table;
}

} // namespace basbdcells
