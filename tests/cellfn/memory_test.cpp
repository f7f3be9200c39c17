#include "basbdcells/library.h"
#include "failing_heap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using namespace basbdcells;

namespace {

TEST(memory, does_not_grow_with_what_is_passed_over)
{
    constexpr std::size_t much = std::size_t{1} << 18U;
    const std::string gap(40, ' '); // faults need not stand close together to be too many
    const struct {
        std::string begin;
        std::string repeated;
        std::string end;
    } texts[] = {{"", std::string(1, '\0'), ""},
                 {"", "a", ""},
                 {"", "GATE " + gap, ""},
                 {"", "LATCH x " + gap, ""},
                 {"GATE a 1 y=", "(", ""},
                 {"GATE a ", "1", " y"},
                 {"library(l){", " ", "}"},
                 {"library(l){", "a", "}"},
                 {"library(l){", "}" + gap, ""},
                 {"library(l){", ":\n" + gap, "}"},
                 {"library(l){", "x(){", ""},
                 {"library(l){/*", "*", "*/}"},
                 {"library(l){x:\"", "a", "\"}"},
                 {"library(l){x:\"", "a\n", "\"}"},
                 {"library(l){x:", "1+", "}"},
                 {"library(l){x(", "1,", ")}"},
                 {"library(l){cell(", "1,", "){}}"},
                 {"library(l){cell(a){pin(b){x(", "\"1\" ", ")}}}"}};
    for (const auto& each : texts) {
        std::string text = each.begin;
        while (text.size() < much) {
            text += each.repeated;
        }
        text += each.end;
        failing_heap::refuse_above(SIZE_MAX);
        const std::size_t before = failing_heap::live_bytes();
        const library read = read_library(text);
        EXPECT_LT(failing_heap::peak_bytes() - before, much) << each.begin << each.repeated;
        EXPECT_LE(read.cells.size(), 1U);
    }
}

} // namespace
