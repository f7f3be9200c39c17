#include "tree.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace cellfn {

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

} // namespace

cell_tree::cell_tree(const expression& source, std::vector<TECHMAP_SIG>& signals)
    : function(nullptr, BOOL_VAR_QY)
{
    const auto operand = [&](const step& each) {
        if (each.kind == step_kind::pin) {
            return edge{new BOOL_TNODE(BOOL_OP_SIG, &signals[each.pin])};
        }
        return edge{new BOOL_TNODE(each.kind == step_kind::one ? BOOL_OP_ONE : BOOL_OP_ZERO)};
    };
    const auto complement = [](edge& value) { value.complemented ^= 1U; };
    const edge root = evaluate(source, operand, complement, join);
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

} // namespace cellfn
