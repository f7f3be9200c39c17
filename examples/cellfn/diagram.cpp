#include "diagram.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <unordered_set>

namespace cellfn {

namespace {

/// The length of the whole text, counted over shared nodes; it stays at the largest number when it
/// is beyond that.
std::uint64_t text_length(const BDD_NODE* root)
{
    std::unordered_map<const BDD_NODE*, std::uint64_t> lengths;
    const auto length_of = [&](const BDD_NODE* edge) {
        const edge_parts parts(edge);
        return parts.is_constant() ? 1 : lengths.at(parts.node) + (parts.complemented ? 1 : 0);
    };
    std::vector<const BDD_NODE*> nodes = nodes_below(root);
    std::reverse(nodes.begin(), nodes.end());
    for (const BDD_NODE* each : nodes) {
        constexpr std::uint64_t frame = 5; // "(", the name, "?", ":" and ")"
        constexpr std::uint64_t limit = std::numeric_limits<std::uint64_t>::max() / 4;
        const bool is_variable =
            edge_parts(each->high).is_constant() && edge_parts(each->low).is_constant();
        lengths[each] =
            is_variable ? 1 : std::min(limit, frame + length_of(each->high) + length_of(each->low));
    }
    return length_of(root);
}

} // namespace

edge_parts::edge_parts(const BDD_NODE* edge)
    : node(edge), complemented((reinterpret_cast<std::uintptr_t>(edge) & 1U) != 0)
{
    if (complemented) { // bit 0 of an edge is its complement mark
        node = reinterpret_cast<const BDD_NODE*>(reinterpret_cast<const char*>(edge) - 1);
    }
}

std::vector<const BDD_NODE*> nodes_below(const BDD_NODE* edge)
{
    std::vector<const BDD_NODE*> found;
    std::unordered_set<const BDD_NODE*> seen;
    const auto add = [&](const BDD_NODE* each) {
        const edge_parts parts(each);
        if (!parts.is_constant() && seen.insert(parts.node).second) {
            found.push_back(parts.node);
        }
    };
    add(edge);
    for (std::size_t next = 0; next < found.size();) {
        const BDD_NODE* node = found[next++]; // `found` grows
        add(node->high);
        add(node->low);
    }
    std::stable_sort(found.begin(), found.end(), [](const BDD_NODE* left, const BDD_NODE* right) {
        return left->varid < right->varid;
    });
    return found;
}

std::string bdd_text(BDD_FUNC& function)
{
    const std::uint64_t length = text_length(function.bdd);
    if (length > longest_bdd_text) {
        return "(" + std::to_string(length) + " characters)";
    }
    std::string names = "abcdefghijklmnopqrstuvwxyz";
    std::string text(length + 1, '\0');
    function.printbddexpr(text.data(), names.data());
    text.resize(length);
    return text;
}

bool bdd_value(const BDD_FUNC& function, std::uint64_t assignment)
{
    edge_parts at(function.bdd);
    bool complemented = at.complemented;
    while (!at.is_constant()) {
        at = edge_parts((assignment >> at.node->varid & 1U) != 0 ? at.node->high : at.node->low);
        complemented = complemented != at.complemented;
    }
    return !complemented;
}

} // namespace cellfn
