#include "forms.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace cellfn {

using basbdcells::step;
using basbdcells::step_kind;

namespace {

/// A subtree and whether it enters complemented.
struct edge {
    BOOL_TNODE* node;
    unsigned char complemented = 0;
    BOOL_TNODE* last = nullptr; ///< the last operator of the chain that starts in `node`
};

BOOL_OP operation_of(step_kind kind)
{
    switch (kind) {
    case step_kind::conjunction:
        return BOOL_OP_AND;
    case step_kind::exclusive:
        return BOOL_OP_XOR;
    default:
        return BOOL_OP_OR;
    }
}

/// Adds an operand to a chain of one operator, which leans to the right as the library writes it
/// flat, or starts a chain.
void join(step_kind kind, edge& left, const edge& right)
{
    const BOOL_OP operation = operation_of(kind);
    if (left.last != nullptr && left.complemented == 0 && left.node->op == operation) {
        left.last->right = new BOOL_TNODE(operation, left.last->right, left.last->rcompl,
                                          right.node, right.complemented);
        left.last->rcompl = 0;
        left.last = left.last->right;
    } else {
        left.node =
            new BOOL_TNODE(operation, left.node, left.complemented, right.node, right.complemented);
        left.complemented = 0;
        left.last = left.node;
    }
}

void combine(TRUTH_TABLE_VAL& left, const TRUTH_TABLE_VAL& right, signed char operation)
{
    switch (operation) {
    case BOOL_OP_AND:
        left &= right;
        break;
    case BOOL_OP_XOR:
        left ^= right;
        break;
    default:
        left |= right;
    }
}

/// @brief Computes a block of a tree's column, in which the inputs from `width` on are fixed.
///
/// Walks the tree bottom-up with a stack of its own: a chain may be as long as the user's text, and
/// a value waits for each of its operators. Every operator has both operands.
class block_walk {
public:
    /// @param block  where the block stands in the column: the values of the fixed inputs
    block_walk(const std::vector<TECHMAP_SIG>& all, int block_width, std::size_t block)
        : signals(all), width(block_width), fixed(block), one(width, 1)
    {
    }

    TRUTH_TABLE_VAL run(const BOOL_FUNC& function)
    {
        visits.push_back({function.root, 0});
        while (!visits.empty()) {
            advance();
        }
        complement_if(function.rootcompl != 0);
        return std::move(values.back());
    }

private:
    /// An operator is visited three times: before its operands, between them and after them.
    struct visit {
        const BOOL_TNODE* node;
        int operands; ///< operands whose values are on the stack
    };

    void advance()
    {
        visit& top = visits.back();
        const BOOL_TNODE& node = *top.node;
        if (basbd_is_leaf(node)) {
            values.push_back(leaf_value(node));
            visits.pop_back();
        } else if (top.operands == 0) {
            top.operands = 1;
            visits.push_back({node.left, 0});
        } else if (top.operands == 1) {
            complement_if(node.lcompl != 0);
            top.operands = 2;
            visits.push_back({node.right, 0});
        } else {
            complement_if(node.rcompl != 0);
            const TRUTH_TABLE_VAL right = std::move(values.back());
            values.pop_back();
            combine(values.back(), right, node.op);
            visits.pop_back();
        }
    }

    void complement_if(bool complemented)
    {
        if (complemented) {
            values.back() ^= one;
        }
    }

    TRUTH_TABLE_VAL leaf_value(const BOOL_TNODE& leaf) const
    {
        const TECHMAP_SIG* signal = basbd_leaf_signal(leaf);
        if (signal == nullptr) {
            return {width, leaf.op == BOOL_OP_ONE ? 1 : 0};
        }
        const auto number = static_cast<int>(signal - signals.data());
        if (number >= width) {
            return {width, static_cast<int>(fixed >> (number - width) & 1U)};
        }
        BOOL_TRUTH_TABLE input;
        input.set_identity_for_input(width, number);
        return std::move(input.value);
    }

    const std::vector<TECHMAP_SIG>& signals;
    int width;
    std::size_t fixed;
    TRUTH_TABLE_VAL one;
    std::vector<visit> visits;
    std::vector<TRUTH_TABLE_VAL> values;
};

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

cell_tree::cell_tree(const basbdcells::expression& source, std::vector<TECHMAP_SIG>& signals)
    : function(nullptr, BOOL_VAR_QY)
{
    const auto operand = [&](const step& each) {
        if (each.kind == step_kind::pin) {
            return edge{new BOOL_TNODE(BOOL_OP_SIG, &signals[each.pin])};
        }
        return edge{new BOOL_TNODE(each.kind == step_kind::one ? BOOL_OP_ONE : BOOL_OP_ZERO)};
    };
    const auto complement = [](edge& value) { value.complemented ^= 1U; };
    const edge root = basbdcells::evaluate(source, operand, complement, join);
    function.root = root.node;
    function.rootcompl = root.complemented;
    function.nsuppt = function.countsuppt();
    for (std::size_t i = 0; i < std::min(signals.size(), named_variables); ++i) {
        function.setvarname(&signals[i], static_cast<BOOL_VARNAME>(i));
    }
}

std::string tree_equation(BOOL_FUNC& function)
{
    const std::unique_ptr<char[]> text(function.writeeqn());
    return text.get();
}

TRUTH_TABLE_VAL tree_column(const BOOL_FUNC& function, const std::vector<TECHMAP_SIG>& signals)
{
    constexpr int most_inputs = 12; // so that a block takes half a kilobyte
    const int width = std::max(1, static_cast<int>(signals.size()));
    const int block_width = std::min(width, most_inputs);
    TRUTH_TABLE_VAL column(width, 0);
    auto to = column.words.begin();
    for (std::size_t block = 0; block < std::size_t{1} << (width - block_width); ++block) {
        const TRUTH_TABLE_VAL part = block_walk(signals, block_width, block).run(function);
        to = std::copy(part.words.begin(), part.words.end(), to);
    }
    return column;
}

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
