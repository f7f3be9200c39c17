#include "texts.h"

#include "forms.h"
#include "status.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

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

literal_counts count_literals(const BDD_NODE* edge)
{
    std::unordered_map<const BDD_NODE*, literal_counts> counts; // none for the constant
    std::vector<const BDD_NODE*> nodes = nodes_below(edge);
    std::reverse(nodes.begin(), nodes.end());
    for (const BDD_NODE* each : nodes) {
        const edge_parts high(each->high);
        const edge_parts low(each->low);
        const literal_counts of_high = counts[high.node];
        const literal_counts of_low = counts[low.node];
        // A constant half is not written, nor is the input's own literal before it; of two
        // constant halves one literal is left, which is the function.
        const std::uint64_t own = (high.is_constant() ? 0U : 1U) + (low.is_constant() ? 0U : 1U);
        literal_counts& all = counts[each];
        all.external = std::max<std::uint64_t>(1, own + of_high.external + of_low.external);
        all.internal = high.node == low.node // an exclusive OR
                           ? 1 + of_low.internal
                           : own + of_high.internal + of_low.internal;
    }
    return counts[edge_parts(edge).node];
}

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
    using truth_table = BOOL_TRUTH_TABLE;
    std::string found;
    for (const std::string& each :
         {difference(table, &truth_table::set_value_from_hex_string, texts.hexadecimal,
                     "the column"),
          difference(table, &truth_table::set_value_from_external_equation, texts.external,
                     "the external equation"),
          difference(table, &truth_table::set_value_from_internal_equation, texts.internal,
                     "the internal equation")}) {
        found += (found.empty() || each.empty() ? "" : "; ") + each;
    }
    return found;
}

} // namespace cellfn
