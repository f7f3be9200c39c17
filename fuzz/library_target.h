/// @file
/// @brief The reader of cell libraries, and the texts of every output that it reads.
#pragma once

#include "basbdcells/library.h"
#include "fuzz.h"
#include "texts.h"

#include <string_view>

inline void read_and_check(std::string_view text)
{
    constexpr std::size_t most_pins = 8;
    const basbdcells::library source = basbdcells::read_library(text);
    for (const basbdcells::cell& each : source.cells) {
        for (const basbdcells::output& drives : each.outputs) {
            if (drives.function.pins.size() <= most_pins) {
                const BOOL_TRUTH_TABLE table = basbdcells::table_of(drives.function);
                check(check_texts(table, cellfn::table_texts(table)).empty(), "texts of a cell");
            }
        }
    }
}
