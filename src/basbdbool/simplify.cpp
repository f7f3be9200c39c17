#include "simplify.h"

#include "node.h"
#include "reports.h"
#include "tree_path.h"

#include <utility>

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

bool is_known_operator(signed char op) { return op >= BOOL_OP_AND && op <= BOOL_OP_OR; }

struct OPERAND {
    BOOL_TNODE* node;
    unsigned char flag;
};

/// The replacement of an operator whose operands are a constant and another node.
BOOL_TNODE* fold_constant(BOOL_TNODE* node, OPERAND constant_operand, OPERAND other_operand,
                          REPORT unknown_op, LATER_REPORTS& reports)
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

BOOL_TNODE* fold_right_constant(BOOL_TNODE* node, LATER_REPORTS& reports)
{
    return fold_constant(node, {node->right, node->rcompl}, {node->left, node->lcompl},
                         REPORT::RIGHT_CONSTANT_OP, reports);
}

BOOL_TNODE* fold_left_constant(BOOL_TNODE* node, LATER_REPORTS& reports)
{
    return fold_constant(node, {node->left, node->lcompl}, {node->right, node->rcompl},
                         REPORT::LEFT_CONSTANT_OP, reports);
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
BOOL_TNODE* fold_same_signals(BOOL_TNODE* node, LATER_REPORTS& reports)
{
    const bool is_known = is_known_operator(node->op);
    if (!is_known) {
        reports.add(REPORT::SAME_OPERANDS_OP);
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

/// Rewrites as asked for and reports once that is done.
BOOL_TNODE* rewrite_and_report(BOOL_TNODE* node, BOOL_TNODE* (*change)(BOOL_TNODE*, LATER_REPORTS&))
{
    LATER_REPORTS reports;
    BOOL_TNODE* const replacement = change(node, reports);
    reports.send();
    return replacement;
}

/// The replacement of an operator whose children are reduced.
BOOL_TNODE* reduce_node(BOOL_TNODE* node, LATER_REPORTS& reports)
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
    if (basbd_is_leaf(*left) && is_leaf_of(*right, basbd_leaf_signal(*left))) {
        return fold_same_signals(node, reports);
    }
    return node;
}

/// @brief Walks over the operators of a tree and may replace them.
/// @param enter  takes each operator and the flag of the edge into it before what is below
/// @param leave  answers what stands for an operator after what is below it
/// @return what stands for `root`, which the caller deletes when it is another node
template <typename ENTER, typename LEAVE>
BOOL_TNODE* rewrite(BOOL_TNODE* root, ENTER enter, LEAVE leave)
{
    TREE_PATH path(root);
    for (bool left_is_done = false;;) {
        BOOL_TNODE& node = *path.node();
        if (!left_is_done && is_operator(node.left)) {
            enter(*node.left, node.lcompl);
            path.descend_left();
            continue;
        }
        left_is_done = false;
        if (is_operator(node.right)) {
            enter(*node.right, node.rcompl);
            path.descend_right();
            continue;
        }
        while (!left_is_done) {
            BOOL_TNODE* const done = path.node();
            BOOL_TNODE* const replacement = leave(done);
            if (path.at_start()) {
                return replacement;
            }
            left_is_done = path.ascend_with(replacement) == SIDE::LEFT;
            if (replacement != done) {
                delete_node(done);
                if (take_own_complement(*replacement)) {
                    toggle(left_is_done ? path.node()->lcompl : path.node()->rcompl);
                }
            }
        }
    }
}

} // namespace

bool take_own_complement(BOOL_TNODE& replacement)
{
    return basbd_is_leaf(replacement) &&
           std::exchange(replacement.lcompl, static_cast<unsigned char>(0)) != 0;
}

BOOL_TNODE* reduce_tree(BOOL_TNODE* root, LATER_REPORTS& reports)
{
    return rewrite(
        root, [](BOOL_TNODE& /*node*/, unsigned char& /*flag*/) {},
        [&](BOOL_TNODE* node) { return reduce_node(node, reports); });
}

void push_complements(BOOL_TNODE* root, unsigned char is_complemented)
{
    unsigned long refused = 0;
    const auto take_complement = [&](BOOL_TNODE& node, unsigned char& flag) {
        if (std::exchange(flag, static_cast<unsigned char>(0)) == 0) {
            return;
        }
        if (is_known_operator(node.op)) {
            complement(node);
        } else {
            ++refused;
        }
    };
    take_complement(*root, is_complemented);
    rewrite(root, take_complement, [](BOOL_TNODE* node) { return node; });
    for (; refused > 0; --refused) {
        report(REPORT::PUSH_THROUGH_OP);
    }
}

bool is_pure(BOOL_TNODE* root, signed char op)
{
    return !visit_operators(
        root, [op](const BOOL_TNODE& node) { return node.op == op ? WALK::BELOW : WALK::STOP; });
}

void BOOL_TNODE::complsubtree() { complement(*this); }

BOOL_TNODE* BOOL_TNODE::reducetrivialsubtrees()
{
    if (basbd_is_leaf(*this)) {
        report(REPORT::REDUCE_LEAF);
        return this;
    }
    return rewrite_and_report(this, reduce_tree);
}

BOOL_TNODE* BOOL_TNODE::trivialrchild() { return rewrite_and_report(this, fold_right_constant); }

BOOL_TNODE* BOOL_TNODE::triviallchild() { return rewrite_and_report(this, fold_left_constant); }

BOOL_TNODE* BOOL_TNODE::idempotency() { return rewrite_and_report(this, fold_same_signals); }

void BOOL_TNODE::pushbubblestoleaves(unsigned char iscompl)
{
    if (basbd_is_leaf(*this)) {
        report(REPORT::PUSH_INTO_LEAF);
        return;
    }
    push_complements(this, iscompl);
}

bool BOOL_TNODE::issubtreepure(char op_) { return is_pure(this, op_); }
