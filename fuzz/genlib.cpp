// The reader of cell libraries, and the texts of every output that it reads.

#include "basbdcells/library.h"
#include "fuzz.h"
#include "texts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t most_pins = 8;
    const basbdcells::library source = basbdcells::read_library(fuzz_input(data, size).rest());
    for (const basbdcells::cell& each : source.cells) {
        for (const basbdcells::output& drives : each.outputs) {
            if (drives.function.pins.size() <= most_pins) {
                const BOOL_TRUTH_TABLE table = basbdcells::table_of(drives.function);
                check(check_texts(table, cellfn::table_texts(table)).empty(), "texts of a cell");
            }
        }
    }
    return 0;
}
