/// @file
/// @brief One run for either equation reader: a byte for the width, then the text.
#pragma once

#include "basbdtt.h"
#include "fuzz.h"
#include "literal_reader.h"
#include "quiet_host.h"

namespace equation_target {

constexpr unsigned widest = 14;
constexpr int widest_of_definition = 6;

inline void read(BOOL_TRUTH_TABLE& table, bool external, int width, const std::string& text)
{
    external ? table.set_value_from_external_equation(width, text)
             : table.set_value_from_internal_equation(width, text);
}

inline bool same(const BOOL_TRUTH_TABLE& a, const BOOL_TRUTH_TABLE& b)
{
    return a.width == b.width && a.value.bit_count == b.value.bit_count &&
           a.value.words == b.value.words;
}

/// The table that the definition reads. @return whether it reads one
inline bool define(BOOL_TRUTH_TABLE& table, bool external, int width, const std::string& text)
{
    try {
        const std::uint64_t column = literal_reader{external, width}.read(text);
        TRUTH_TABLE_VAL value(width, 0);
        value.words[0] = static_cast<std::uint32_t>(column);
        if (width == widest_of_definition) {
            value.words[1] = static_cast<std::uint32_t>(column >> 32);
        }
        table.set_value(width, value);
        return true;
    } catch (const std::string&) {
        return false;
    }
}

inline void run(bool external, fuzz_input input)
{
    const int width = static_cast<int>(1 + input.below(widest));
    const std::string text = input.rest();
    BOOL_TRUTH_TABLE before;
    before.set_identity_for_input(7, 6);
    BOOL_TRUTH_TABLE table = before;
    read(table, external, width, text);
    const unsigned messages = quiet_host::take_statuses();
    check(messages <= 1, "one message at most");
    if (width <= widest_of_definition) {
        BOOL_TRUTH_TABLE expected = before;
        check(define(expected, external, width, text) == (messages == 0), "reads what is defined");
        check(same(table, expected), "reads as defined, or leaves the table as it was");
    }
    check(messages == 0 || same(table, before), "a refused text changes nothing");
    for (const bool format : {false, true}) {
        BOOL_TRUTH_TABLE back;
        read(back, format, table.width,
             format ? table.get_external_equation() : table.get_internal_equation());
        check(same(back, table), "what is written reads back");
    }
}

} // namespace equation_target
