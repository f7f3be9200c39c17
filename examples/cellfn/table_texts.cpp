#include "table_texts.h"

#include "status.h"

namespace cellfn {

namespace {

using reader = void (BOOL_TRUTH_TABLE::*)(int, const std::string&);

std::string difference(const BOOL_TRUTH_TABLE& table, reader read,
                       const std::optional<std::string>& text, const std::string& format)
{
    if (!text) {
        return "";
    }
    BOOL_TRUTH_TABLE back;
    (back.*read)(table.get_width(), *text);
    const std::string messages = take_messages();
    if (!messages.empty()) {
        return format + " is refused: " + messages;
    }
    const bool is_equal = back.get_width() == table.get_width() && back.value == table.value;
    return is_equal ? "" : format + " reads back as " + back.value.get_hex_string();
}

} // namespace

table_texts::table_texts(const BOOL_TRUTH_TABLE& table, literal_counts literals)
    : hexadecimal(table.value.get_hex_string())
{
    if (literals.external <= most_literals) {
        external = table.get_external_equation();
    }
    if (literals.internal <= most_literals) {
        internal = table.get_internal_equation();
    }
}

std::string check_texts(const BOOL_TRUTH_TABLE& table, const table_texts& texts)
{
    using T = BOOL_TRUTH_TABLE;
    std::string found;
    for (const std::string& each :
         {difference(table, &T::set_value_from_hex_string, texts.hexadecimal, "the column"),
          difference(table, &T::set_value_from_external_equation, texts.external,
                     "the external equation"),
          difference(table, &T::set_value_from_internal_equation, texts.internal,
                     "the internal equation")}) {
        found += (found.empty() || each.empty() ? "" : "; ") + each;
    }
    return found;
}

} // namespace cellfn
