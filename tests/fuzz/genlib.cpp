// The reader of cell libraries, and the texts of every cell that it reads.

#include "genlib.h"
#include "column.h"
#include "fuzz.h"
#include "table_texts.h"

namespace {

constexpr std::size_t most_pins = 8;

/// Every entry of the cell's column by its expression.
void check_column(const cellfn::expression& function, const BOOL_TRUTH_TABLE& table)
{
    for (unsigned x = 0; x < 1U << table.get_width(); ++x) {
        const unsigned value = cellfn::evaluate(
            function,
            [&](const cellfn::step& each) {
                return each.kind == cellfn::step_kind::pin   ? x >> each.pin & 1U
                       : each.kind == cellfn::step_kind::one ? 1U
                                                             : 0U;
            },
            [](unsigned& operand) { operand ^= 1U; },
            [](cellfn::step_kind kind, unsigned& left, unsigned right) {
                left = kind == cellfn::step_kind::conjunction   ? left & right
                       : kind == cellfn::step_kind::disjunction ? left | right
                                                                : left ^ right;
            });
        check((table.value.words[x / 32] >> x % 32 & 1U) == value, "column of a cell");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const cellfn::library source = cellfn::read_genlib("fuzz", FUZZ_INPUT(data, size).rest());
    for (const cellfn::cell& each : source.cells) {
        if (each.function.pins.size() <= most_pins) {
            const BOOL_TRUTH_TABLE table = cellfn::to_table(each.function);
            check_column(each.function, table);
            check(check_texts(table, cellfn::table_texts(table)).empty(), "texts of a cell");
        }
    }
    return 0;
}
