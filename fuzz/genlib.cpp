// The reader of cell libraries, and the texts of every cell that it reads.

#include "genlib.h"
#include "column.h"
#include "fuzz.h"
#include "table_texts.h"

namespace {

constexpr std::size_t most_pins = 8;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const cellfn::library source = cellfn::read_genlib("fuzz", FUZZ_INPUT(data, size).rest());
    for (const cellfn::cell& each : source.cells) {
        if (each.function.pins.size() <= most_pins) {
            const BOOL_TRUTH_TABLE table = cellfn::to_table(each.function);
            check(check_texts(table, cellfn::table_texts(table)).empty(), "texts of a cell");
        }
    }
    return 0;
}
