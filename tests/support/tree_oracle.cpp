#include "tree_oracle.h"

#include <cstdlib>
#include <cstring>

namespace tree_oracle {

namespace {

constexpr char name_letters[] = "ABCDEFGIJKLMNOPXY";
const char* const operator_names[] = {"AND(", "XOR(", "OR("};

TECHMAP_SIG signals_in_use[max_signals];

unsigned index_of(const BOOL_TNODE& leaf)
{
    return static_cast<unsigned>(basbd_leaf_signal(leaf) - signals_in_use);
}

bool skip(const char*& rest, const char* expected)
{
    const std::size_t size = std::strlen(expected);
    const bool matches = std::strncmp(rest, expected, size) == 0;
    rest += matches ? size : 0;
    return matches;
}

unsigned parse_number(const char*& rest)
{
    char* end = nullptr;
    const auto number = static_cast<unsigned>(std::strtoul(rest, &end, 10));
    rest = end;
    return number;
}

BOOL_TNODE* parse(const char*& rest)
{
    if (skip(rest, "-")) {
        return nullptr;
    }
    if (skip(rest, "0") || skip(rest, "1")) {
        return new BOOL_TNODE(rest[-1] == '1' ? BOOL_OP_ONE : BOOL_OP_ZERO);
    }
    if (skip(rest, "s")) {
        auto* leaf = new BOOL_TNODE(BOOL_OP_SIG, signal(parse_number(rest)));
        if (skip(rest, ":")) {
            leaf->op = static_cast<signed char>(std::strchr(name_letters, *rest++) - name_letters +
                                                BOOL_OP_FIRST_NAMED);
        }
        return leaf;
    }
    auto* node = new BOOL_TNODE(BOOL_OP_AND);
    while (!skip(rest, operator_names[node->op]) && ++node->op <= BOOL_OP_OR) {
    }
    if (node->op > BOOL_OP_OR && skip(rest, "op")) {
        node->op = static_cast<signed char>(parse_number(rest));
        skip(rest, "(");
    }
    node->lcompl = skip(rest, "~") ? 1 : 0;
    node->left = parse(rest);
    skip(rest, ",");
    node->rcompl = skip(rest, "~") ? 1 : 0;
    node->right = parse(rest);
    skip(rest, ")");
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
    switch (node->op) {
    case BOOL_OP_AND:
        return left && right;
    case BOOL_OP_XOR:
        return left != right;
    default:
        return left || right;
    }
}

std::vector<bool> column(const BOOL_TNODE* node, unsigned signals, LONE_RIGHT lone_right)
{
    std::vector<bool> values;
    for (unsigned assignment = 0; assignment < 1U << signals; ++assignment) {
        values.push_back(evaluate(node, assignment, lone_right));
    }
    return values;
}

std::vector<bool> column(const BOOL_FUNC& function, unsigned signals, LONE_RIGHT lone_right)
{
    std::vector<bool> values(std::size_t{1} << signals, false);
    if (function.root != nullptr) {
        values = column(function.root, signals, lone_right);
    }
    if (function.rootcompl != 0) {
        values.flip();
    }
    return values;
}

std::string shape(const BOOL_TNODE* node)
{
    if (node == nullptr) {
        return "-";
    }
    const auto op = node->op;
    if (op == BOOL_OP_ONE || op == BOOL_OP_ZERO) {
        return op == BOOL_OP_ONE ? "1" : "0";
    }
    if (op >= BOOL_OP_SIG && op <= BOOL_OP_LAST_NAMED) {
        const std::string name =
            op == BOOL_OP_SIG ? "" : std::string(":") + name_letters[op - BOOL_OP_FIRST_NAMED];
        return (node->lcompl != 0 ? "!s" : "s") + std::to_string(index_of(*node)) + name;
    }
    const std::string name =
        op >= 0 && op <= 2 ? operator_names[op] : "op" + std::to_string(op) + "(";
    return name + (node->lcompl != 0 ? "~" : "") + shape(node->left) + "," +
           (node->rcompl != 0 ? "~" : "") + shape(node->right) + ")";
}

BOOL_TNODE* parse_shape(const std::string& text)
{
    const char* rest = text.c_str();
    return parse(rest);
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
