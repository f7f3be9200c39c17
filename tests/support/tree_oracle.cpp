#include "tree_oracle.h"

#include <algorithm>
#include <iterator>

namespace tree_oracle {

namespace {

constexpr char names[] = "ABCDEFGIJKLMNOPXY";
constexpr char operators[] = "*@+";
constexpr signed char unknown_operator = 40;

TECHMAP_SIG signals_in_use[max_signals];

unsigned index_of(const BOOL_TNODE& leaf)
{
    return static_cast<unsigned>(basbd_leaf_signal(leaf) - signals_in_use);
}

bool skip(const char*& rest, char expected)
{
    const bool matches = *rest == expected;
    rest += matches ? 1 : 0;
    return matches;
}

BOOL_TNODE* parse(const char*& rest)
{
    const char first = *rest++;
    if (first == '-') {
        return nullptr;
    }
    if (first == '0' || first == '1') {
        return new BOOL_TNODE(first == '1' ? BOOL_OP_ONE : BOOL_OP_ZERO);
    }
    if (first >= 'a' && first <= 'z') {
        const char* const name = std::find(names, std::end(names) - 1, *rest);
        const auto v = *name == '\0' ? -1 : static_cast<int>(name - names);
        rest += v < 0 ? 0 : 1;
        return new BOOL_TNODE(static_cast<char>(BOOL_OP_SIG + 1 + v),
                              signal(static_cast<unsigned>(first - 'a')));
    }
    auto* node = new BOOL_TNODE(BOOL_OP_AND);
    const auto op = std::find(operators, operators + 3, first) - operators;
    node->op = op < 3 ? static_cast<signed char>(op) : unknown_operator;
    skip(rest, '(');
    node->lcompl = skip(rest, '~') ? 1 : 0;
    node->left = parse(rest);
    skip(rest, ',');
    node->rcompl = skip(rest, '~') ? 1 : 0;
    node->right = parse(rest);
    skip(rest, ')');
    return node;
}

/// Builds one random tree.
class tree_maker {
public:
    tree_maker(std::mt19937& random_bits, const tree_kind& wanted)
        : random(random_bits), shapes(wanted)
    {
    }

    BOOL_TNODE* subtree(unsigned depth)
    {
        if (shapes.shared && !made.empty() && below(4) == 0) {
            return made[below(static_cast<unsigned>(made.size()))];
        }
        BOOL_TNODE* const node = depth == 0 || below(4) == 0 ? leaf() : operator_node(depth);
        node->usage = static_cast<unsigned short>(below(3) == 0 ? below(0x10000) : below(2));
        made.push_back(node);
        return node;
    }

private:
    BOOL_TNODE* operator_node(unsigned depth)
    {
        auto* node = new BOOL_TNODE(static_cast<char>(below(3)));
        const unsigned form = below(12); // both operands in most cases
        if (form != 0 && !(shapes.lone_right && form == 1)) {
            node->left = subtree(depth - 1);
        }
        if (form != 0 && form != 2) {
            node->right = subtree(depth - 1);
        }
        node->lcompl = static_cast<unsigned char>(below(2));
        node->rcompl = static_cast<unsigned char>(below(2));
        return node;
    }

    BOOL_TNODE* leaf()
    {
        if (below(6) == 0) {
            return new BOOL_TNODE(static_cast<char>(BOOL_OP_ONE + below(2)));
        }
        const unsigned index = below(shapes.signals);
        const unsigned op = BOOL_OP_SIG + (index < sizeof(names) - 1 ? index + 1 : 0);
        return new BOOL_TNODE(static_cast<char>(op), signal(index));
    }

    unsigned below(unsigned bound) { return static_cast<unsigned>(random() % bound); }

    std::mt19937& random;
    const tree_kind& shapes;
    std::vector<BOOL_TNODE*> made;
};

/// The value where bit i of `assignment` is that of signal i. Without a left operand it is 0.
bool evaluate(const BOOL_TNODE* node, unsigned assignment)
{
    if (basbd_is_leaf(*node)) {
        return node->op <= BOOL_OP_LAST_NAMED ? (assignment >> index_of(*node) & 1U) != 0
                                              : node->op == BOOL_OP_ONE;
    }
    if (node->left == nullptr) {
        return false;
    }
    const bool left = evaluate(node->left, assignment) != (node->lcompl != 0);
    if (node->right == nullptr) {
        return left;
    }
    const bool right = evaluate(node->right, assignment) != (node->rcompl != 0);
    return node->op == BOOL_OP_AND   ? left && right
           : node->op == BOOL_OP_XOR ? left != right
                                     : left || right;
}

} // namespace

TECHMAP_SIG* signal(unsigned index) { return &signals_in_use[index]; }

std::vector<bool> column(const BOOL_FUNC& function, unsigned signals)
{
    std::vector<bool> values(std::size_t{1} << signals, function.rootcompl != 0);
    for (unsigned at = 0; function.root != nullptr && at < values.size(); ++at) {
        values[at] = evaluate(function.root, at) != values[at];
    }
    return values;
}

std::string shape(const BOOL_TNODE* node)
{
    if (node == nullptr) {
        return "-";
    }
    const signed char op = node->op;
    if (op == BOOL_OP_ONE || op == BOOL_OP_ZERO) {
        return op == BOOL_OP_ONE ? "1" : "0";
    }
    if (basbd_is_leaf(*node)) {
        const std::string text(1, static_cast<char>('a' + index_of(*node)));
        return (node->lcompl != 0 ? "!" : "") + text +
               (op == BOOL_OP_SIG ? "" : std::string(1, names[op - BOOL_OP_FIRST_NAMED]));
    }
    return std::string(1, op >= 0 && op < 3 ? operators[op] : '?') +
           (node->lcompl != 0 ? "(~" : "(") + shape(node->left) + (node->rcompl != 0 ? ",~" : ",") +
           shape(node->right) + ')';
}

std::string shape(const BOOL_FUNC& function)
{
    return (function.rootcompl != 0 ? "~" : "") + shape(function.root);
}

BOOL_TNODE* parse_shape(const char* text) { return parse(text); }

parsed_func::parsed_func(const char* text)
{
    rootcompl = skip(text, '~') ? 1 : 0;
    root = parse_shape(text);
    nsuppt = countsuppt();
}

void count_paths(const BOOL_TNODE* node, path_counts& counts)
{
    ++counts[node];
    for (const BOOL_TNODE* const child : {node->left, node->right}) {
        if (!basbd_is_leaf(*node) && child != nullptr) {
            count_paths(child, counts);
        }
    }
}

BOOL_TNODE* random_tree(std::mt19937& random, const tree_kind& shapes)
{
    return tree_maker(random, shapes).subtree(shapes.depth);
}

} // namespace tree_oracle
