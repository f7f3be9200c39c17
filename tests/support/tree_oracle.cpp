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
class MAKER {
public:
    MAKER(std::mt19937& random_bits, const SHAPES& wanted) : random(random_bits), shapes(wanted) {}

    BOOL_TNODE* operator_node(unsigned depth)
    {
        auto* node = new BOOL_TNODE(static_cast<char>(below(3)));
        const unsigned form = below(12); // both operands in most cases
        const bool bare = shapes.missing && form == 0;
        if (!bare && !(shapes.lone_right && form == 1)) {
            node->left = subtree(depth - 1);
        }
        if (!bare && !(shapes.missing && form == 2)) {
            node->right = subtree(depth - 1);
        }
        node->lcompl = static_cast<unsigned char>(below(2));
        node->rcompl = static_cast<unsigned char>(below(2));
        return remember(node);
    }

    BOOL_TNODE* subtree(unsigned depth)
    {
        if (shapes.shared && !made.empty() && below(4) == 0) {
            return made[below(static_cast<unsigned>(made.size()))];
        }
        return depth == 0 || below(4) == 0 ? leaf() : operator_node(depth);
    }

private:
    BOOL_TNODE* leaf()
    {
        if (shapes.constants && below(6) == 0) {
            return remember(new BOOL_TNODE(static_cast<char>(BOOL_OP_ONE + below(2))));
        }
        const unsigned index = below(shapes.signals);
        const unsigned op = BOOL_OP_SIG + (shapes.named ? index + 1 : 0);
        return remember(new BOOL_TNODE(static_cast<char>(op), signal(index)));
    }

    BOOL_TNODE* remember(BOOL_TNODE* node)
    {
        node->usage = static_cast<unsigned short>(below(3) == 0 ? below(0x10000) : below(2));
        made.push_back(node);
        return node;
    }

    unsigned below(unsigned bound) { return static_cast<unsigned>(random() % bound); }

    std::mt19937& random;
    const SHAPES& shapes;
    std::vector<BOOL_TNODE*> made;
};

} // namespace

TECHMAP_SIG* signal(unsigned index) { return &signals_in_use[index]; }

bool evaluate(const BOOL_TNODE* node, unsigned assignment, LONE_RIGHT lone_right)
{
    if (node->op >= BOOL_OP_SIG && node->op <= BOOL_OP_ZERO) {
        return node->op <= BOOL_OP_LAST_NAMED ? ((assignment >> index_of(*node)) & 1U) != 0
                                              : node->op == BOOL_OP_ONE;
    }
    const bool has_left = node->left != nullptr;
    const bool has_right = node->right != nullptr;
    if (!has_left && (!has_right || lone_right == LONE_RIGHT::IS_ZERO)) {
        return false;
    }
    const bool left =
        has_left && evaluate(node->left, assignment, lone_right) != (node->lcompl != 0);
    const bool right =
        has_right && evaluate(node->right, assignment, lone_right) != (node->rcompl != 0);
    if (!has_left || !has_right) {
        return has_left ? left : right;
    }
    return node->op == BOOL_OP_AND   ? left && right
           : node->op == BOOL_OP_XOR ? left != right
                                     : left || right;
}

std::vector<bool> column(const BOOL_FUNC& function, unsigned signals, LONE_RIGHT lone_right)
{
    std::vector<bool> values(std::size_t{1} << signals);
    for (unsigned assignment = 0; assignment < values.size(); ++assignment) {
        values[assignment] =
            (function.root != nullptr && evaluate(function.root, assignment, lone_right)) !=
            (function.rootcompl != 0);
    }
    return values;
}

std::string shape(const BOOL_TNODE* node)
{
    if (node == nullptr) {
        return "-";
    }
    const int op = node->op;
    if (op == BOOL_OP_ONE || op == BOOL_OP_ZERO) {
        return op == BOOL_OP_ONE ? "1" : "0";
    }
    const auto flagged = [](char mark, unsigned char flag, const std::string& text) {
        return flag != 0 ? mark + text : text;
    };
    if (op >= BOOL_OP_SIG && op <= BOOL_OP_LAST_NAMED) {
        const std::string text(1, static_cast<char>('a' + index_of(*node)));
        return flagged('!', node->lcompl,
                       op == BOOL_OP_SIG ? text : text + names[op - BOOL_OP_FIRST_NAMED]);
    }
    return std::string(1, op >= 0 && op < 3 ? operators[op] : '?') + '(' +
           flagged('~', node->lcompl, shape(node->left)) + ',' +
           flagged('~', node->rcompl, shape(node->right)) + ')';
}

std::string shape(const BOOL_FUNC& function)
{
    return (function.rootcompl != 0 ? "~" : "") + shape(function.root);
}

BOOL_TNODE* parse_shape(const char* text) { return parse(text); }

FUNC::FUNC(const char* text)
{
    rootcompl = skip(text, '~') ? 1 : 0;
    root = parse_shape(text);
    nsuppt = countsuppt();
}

BOOL_TNODE* random_tree(std::mt19937& random, const SHAPES& shapes)
{
    MAKER maker(random, shapes);
    return shapes.operator_root ? maker.operator_node(shapes.depth) : maker.subtree(shapes.depth);
}

void FREE_TREE::operator()(BOOL_TNODE* root) const
{
    root->unmarknodes();
    root->markusage();
    root->reclaim();
    delete root;
}

} // namespace tree_oracle
