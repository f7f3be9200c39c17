#include "basbdcells/matcher.h"
#include "failing_heap.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <fstream>
#include <functional>
#include <new>

using namespace basbdcells;

namespace {

const std::string good_cell =
    "cell(g){pin(A){direction:input;}pin(Y){direction:output;function:A;}}";

std::string gzipped(std::string plain)
{
    z_stream stream{};
    constexpr int gzip_window = 31;
    constexpr int memory_level = 8;
    deflateInit2(&stream, Z_NO_COMPRESSION, Z_DEFLATED, gzip_window, memory_level,
                 Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, plain.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(plain.data());
    stream.avail_in = static_cast<uInt>(plain.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

TEST(gzip, faults_are_told_and_what_comes_before_is_kept)
{
    const std::string half = "library(l){" + good_cell + "cell(h){pin(A){direction:input;}";
    const std::string rest = "pin(Y){direction:output;function:\"!A\";}}}";
    const std::string whole = gzipped(half + rest);
    const auto with = [&](std::size_t from_end, char byte) {
        std::string damaged = whole;
        damaged[damaged.size() - from_end] = byte;
        return damaged;
    };
    std::string wrong_method = whole;
    wrong_method[2] = 7;
    struct {
        std::string file;
        std::size_t outputs;
        std::string message;
    } const cases[] = {
        {half + rest, 2, ""},
        {whole, 2, ""},
        {gzipped(half) + gzipped(rest), 2, ""},
        {whole + "rubbish", 2, ""}, // as gzip passes it
        {whole.substr(0, 2), 0, "compressed data without an end"},
        {whole.substr(0, half.size() + 15), 1, "compressed data without an end"},
        {whole.substr(0, whole.size() - 1), 2, "compressed data without an end"},
        {gzipped(half) + gzipped(rest).substr(0, 12), 1, "compressed data without an end"},
        {with(8, '\0'), 0, "damaged compressed data: incorrect data check"},
        {with(1, '\1'), 0, "damaged compressed data: incorrect length check"},
        {wrong_method, 0, "damaged compressed data: unknown compression method"},
        {gzipped(""), 0, "expected at least one GATE"},
    };
    const std::string path = testing::TempDir() + "cells.lib.gz";
    for (const auto& each : cases) {
        std::ofstream(path, std::ios::binary) << each.file;
        const library read = read_library_file(path);
        std::size_t outputs = 0;
        for (const cell& source : read.cells) {
            outputs += source.outputs.size();
        }
        EXPECT_EQ(outputs, each.outputs) << each.message;
        EXPECT_EQ(read.has_error(), !each.message.empty());
        if (read.has_error()) {
            EXPECT_EQ(read.diagnostics.front().message, each.message);
            EXPECT_EQ(read.diagnostics.front().line, 0);
        }
    }
}

TEST(memory, does_not_grow_with_what_is_passed_over)
{
    constexpr std::size_t much = std::size_t{1} << 20U;
    const struct {
        std::string begin;
        std::string repeated;
        std::string end;
    } texts[] = {{"", std::string(1, '\0'), ""},
                 {"", "a", ""},
                 {"", "GATE ", ""},
                 {"", "LATCH x ", ""},
                 {"GATE a 1 y=", "(", ""},
                 {"GATE a ", "1", " y"},
                 {"library(l){", " ", "}"},
                 {"library(l){", "a", "}"},
                 {"library(l){", "}", ""},
                 {"library(l){", ":\n", "}"},
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
        EXPECT_LT(failing_heap::peak_bytes() - before, much / 2) << each.begin << each.repeated;
        EXPECT_LE(read.cells.size(), 1U);
    }
}

/// Runs with every allocation failing in turn, until all succeed.
void fail_each_allocation(const std::function<void()>& run)
{
    const long before = failing_heap::live_blocks();
    bool is_done = false;
    for (long failing = 1; !is_done; ++failing) {
        failing_heap::arm(failing, failing);
        try {
            run();
            is_done = true;
        } catch (const std::bad_alloc&) {
        }
        is_done = failing_heap::disarm() == 0 && is_done;
        ASSERT_EQ(failing_heap::live_blocks(), before) << failing;
    }
}

TEST(memory, that_ends_is_an_exception_and_nothing_is_lost)
{
    const std::string text = "library(l){x(;" + good_cell + "cell(h){area:2*3;pin(A,B){}\n" +
                             "pin(Y){function:\"!(A B)\";three_state:B;}}}";
    fail_each_allocation([&] { static_cast<void>(read_library(text)); });
    const library read = read_library(text);
    fail_each_allocation([&] {
        const auto wanted = read_function("0x7");
        const function_set functions({std::get<function>(wanted).table});
        EXPECT_LE(find_matches(read.cells, functions).size(), 1U);
        EXPECT_EQ(classes_of({&read.cells.front(), &read.cells.back()}).size(), 1U);
    });
}

} // namespace
