#include "simplify.h"

#include "node.h"
#include "reports.h"
#include "tree_path.h"

#include <utility>

namespace basbdbool {

namespace {

signed char dual(signed char op) { return op == BOOL_OP_AND ? BOOL_OP_OR : BOOL_OP_AND; }

void complement(BOOL_TNODE& node)
{
    switch (node.op) {
    case BOOL_OP_AND:
    case BOOL_OP_OR:
        node.op = dual(node.op);
        toggle(node.lcompl);
        toggle(node.rcompl);
        break;
    case BOOL_OP_ONE:
        node.op = BOOL_OP_ZERO;
        break;
    case BOOL_OP_ZERO:
        node.op = BOOL_OP_ONE;
        break;
    default:
        toggle(node.lcompl);
    }
}

BOOL_TNODE* complement_if(unsigned char flag, BOOL_TNODE* node)
{
    if (flag != 0) {
        complement(*node);
    }
    return node;
}

/// Clears the complement that a leaf carries itself until there is an edge to carry it.
unsigned char take_own_complement(BOOL_TNODE& node)
{
    return basbd_is_leaf(node) ? std::exchange(node.lcompl, static_cast<unsigned char>(0)) : 0;
}

bool is_known_operator(signed char op) { return op >= BOOL_OP_AND && op <= BOOL_OP_OR; }

struct operand {
    BOOL_TNODE* node;
    unsigned char flag;
};

/// The replacement of an operator whose operands are a constant and another node.
BOOL_TNODE* fold_constant(BOOL_TNODE* node, operand constant_operand, operand other_operand,
                          report_site unknown_op, later_reports& reports)
{
    BOOL_TNODE* const constant = complement_if(constant_operand.flag, constant_operand.node);
    BOOL_TNODE* const other = other_operand.node;
    if (!is_known_operator(node->op)) {
        reports.add(unknown_op);
        return node;
    }
    const bool is_one = constant->op == BOOL_OP_ONE;
    if (node->op != BOOL_OP_XOR && is_one == (node->op == BOOL_OP_OR)) { // 1 decides OR, 0 AND
        free_tree(other);
        return constant;
    }
    delete_node(constant);
    if (node->op == BOOL_OP_XOR && is_one) {
        complement(*other);
    }
    return complement_if(other_operand.flag, other);
}

BOOL_TNODE* fold_right_constant(BOOL_TNODE* node, later_reports& reports)
{
    return fold_constant(node, {node->right, node->rcompl}, {node->left, node->lcompl},
                         report_site::right_constant_op, reports);
}

BOOL_TNODE* fold_left_constant(BOOL_TNODE* node, later_reports& reports)
{
    return fold_constant(node, {node->left, node->lcompl}, {node->right, node->rcompl},
                         report_site::left_constant_op, reports);
}

/// Makes a constant of an operator whose children are dealt with already.
BOOL_TNODE* make_constant(BOOL_TNODE* node, BOOL_OP op)
{
    node->op = op;
    node->left = node->right = nullptr;
    node->lcompl = node->rcompl = 0;
    return node;
}

/// The replacement of an operator whose operands are two leaves of one signal.
BOOL_TNODE* fold_same_signals(BOOL_TNODE* node, later_reports& reports)
{
    const bool is_known = is_known_operator(node->op);
    if (!is_known) {
        reports.add(report_site::same_operands_op);
    }
    BOOL_TNODE* const leaf = node->left;
    if (node->right != leaf) {
        delete_node(node->right);
    }
    node->right = nullptr;
    const bool flags_differ = node->lcompl != node->rcompl;
    if (is_known && node->op != BOOL_OP_XOR && !flags_differ) {
        return complement_if(node->lcompl, leaf);
    }
    delete_node(leaf);
    node->left = nullptr;
    if (!is_known) {
        return node;
    }
    const bool is_one = flags_differ && node->op != BOOL_OP_AND;
    return make_constant(node, is_one ? BOOL_OP_ONE : BOOL_OP_ZERO);
}

/// @brief Rewrites as asked for and reports once that is done.
///
/// While reports go out, and for good when one throws, the node stands for its replacement, as an
/// operator with no other operand.
BOOL_TNODE* rewrite_and_report(BOOL_TNODE* node, BOOL_TNODE* (*change)(BOOL_TNODE*, later_reports&))
{
    later_reports reports;
    BOOL_TNODE* const replacement = change(node, reports);
    if (replacement == node) {
        reports.send();
        return node;
    }
    node->left = replacement;
    node->right = nullptr;
    node->lcompl = take_own_complement(*replacement);
    const unsigned char flag = node->lcompl;
    reports.send();
    if (flag != 0) {
        toggle(replacement->lcompl);
    }
    return replacement;
}

/// Whether an operator is still to be reduced although its operands are, as few are.
bool is_reducible(const BOOL_TNODE& node)
{
    const BOOL_TNODE* const left = node.left;
    const BOOL_TNODE* const right = node.right;
    return left == nullptr || right == nullptr || is_constant(*right) || is_constant(*left) ||
           (basbd_is_leaf(*left) && is_leaf_of(*right, basbd_leaf_signal(*left)));
}

/// The replacement of such an operator.
[[gnu::noinline]] BOOL_TNODE* reduce_node(BOOL_TNODE* node, later_reports& reports)
{
    BOOL_TNODE* const left = node->left;
    BOOL_TNODE* const right = node->right;
    if (left == nullptr && right == nullptr) {
        return make_constant(node, BOOL_OP_ZERO);
    }
    if (left == nullptr) {
        return complement_if(node->rcompl, right);
    }
    if (right == nullptr) {
        return complement_if(node->lcompl, left);
    }
    if (is_constant(*right)) {
        return fold_right_constant(node, reports);
    }
    if (is_constant(*left)) {
        return fold_left_constant(node, reports);
    }
    return fold_same_signals(node, reports);
}

} // namespace

void reduce_operands(BOOL_TNODE* node, later_reports& reports)
{
    const auto enter = [](BOOL_TNODE* child, unsigned char /*flag*/) {
        return is_operator(child) ? step::below : step::past;
    };
    const auto reduce = [&](BOOL_TNODE*& child, unsigned char& flag) {
        if (!is_reducible(*child)) {
            return;
        }
        BOOL_TNODE* const done = std::exchange(child, reduce_node(child, reports));
        if (child == done) {
            return;
        }
        delete_node(done);
        flag ^= take_own_complement(*child);
    };
    walk_edges(node, enter, on_edge(reduce));
}

void push_complements(BOOL_TNODE* root, unsigned char is_complemented, later_reports& reports)
{
    const auto take_complement = [&](BOOL_TNODE& node, unsigned char& flag) {
        if (std::exchange(flag, static_cast<unsigned char>(0)) == 0) {
            return;
        }
        if (is_known_operator(node.op)) {
            complement(node);
        } else {
            reports.add(report_site::push_through_op);
        }
    };
    take_complement(*root, is_complemented);
    walk_edges(root, [&](BOOL_TNODE* child, unsigned char& flag) {
        if (!is_operator(child)) {
            return step::past;
        }
        take_complement(*child, flag);
        return step::below;
    });
}

bool is_pure(BOOL_TNODE* root, signed char op)
{
    return !visit_operators(
        root, [op](const BOOL_TNODE& node) { return node.op == op ? step::below : step::stop; });
}

} // namespace basbdbool

using namespace basbdbool;

void BOOL_TNODE::complsubtree() { complement(*this); }

BOOL_TNODE* BOOL_TNODE::reducetrivialsubtrees()
{
    if (basbd_is_leaf(*this)) {
        report(report_site::reduce_leaf);
        return this;
    }
    return rewrite_and_report(this, [](BOOL_TNODE* node, later_reports& reports) {
        reduce_operands(node, reports);
        return is_reducible(*node) ? reduce_node(node, reports) : node;
    });
}

BOOL_TNODE* BOOL_TNODE::trivialrchild() { return rewrite_and_report(this, fold_right_constant); }

BOOL_TNODE* BOOL_TNODE::triviallchild() { return rewrite_and_report(this, fold_left_constant); }

BOOL_TNODE* BOOL_TNODE::idempotency() { return rewrite_and_report(this, fold_same_signals); }

void BOOL_TNODE::pushbubblestoleaves(unsigned char iscompl)
{
    if (basbd_is_leaf(*this)) {
        report(report_site::push_into_leaf);
        return;
    }
    later_reports reports;
    push_complements(this, iscompl, reports);
    reports.send();
}

bool BOOL_TNODE::issubtreepure(char op_code) { return is_pure(this, op_code); }
