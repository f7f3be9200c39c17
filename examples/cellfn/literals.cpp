#include "literals.h"

#include "diagram.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace cellfn {

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

} // namespace cellfn
