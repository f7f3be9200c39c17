/// Operations on random trees against the evaluator.
#include "counting_pool.h"
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

using namespace tree_oracle; // NOLINT(google-build-using-namespace): the subject of this file

namespace {

constexpr unsigned seed = 20;
constexpr int trees = 3000;
constexpr unsigned signals = 4;
using COLUMN = std::vector<bool>;

/// Calls `check(function, shape number)` for random functions; nothing may leak.
template <typename CHECK>
void for_random_functions(SHAPES shapes, CHECK check)
{
    std::mt19937 random(seed);
    const long before = counting_pool::live();
    for (int i = 0; i < trees && !testing::Test::HasFatalFailure(); ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", tree " + std::to_string(i));
        shapes.depth = 1 + static_cast<unsigned>(i) % 5;
        shapes.shared = i % 2 == 1;
        BOOL_FUNC function;
        function.root = random_tree(random, shapes);
        function.rootcompl = static_cast<unsigned char>(i / 2 % 2);
        function.nsuppt = function.countsuppt();
        SCOPED_TRACE(shape(function.root));
        check(function, random);
    }
    EXPECT_EQ(counting_pool::live(), before);
    host_recorder::take_reports();
}

constexpr SHAPES any_shape = [] {
    SHAPES shapes;
    shapes.lone_right = true;
    shapes.operator_root = false;
    return shapes;
}();

/// The column whose entry at `assignment` is `before`'s at `source(assignment)`.
template <typename SOURCE>
COLUMN permuted(const COLUMN& before, SOURCE source)
{
    COLUMN after;
    for (unsigned assignment = 0; assignment < before.size(); ++assignment) {
        after.push_back(before[source(assignment)]);
    }
    return after;
}

unsigned with_bit(unsigned assignment, unsigned bit, bool value)
{
    return value ? assignment | 1U << bit : assignment & ~(1U << bit);
}

/// How many paths lead to each node.
using PATHS = std::map<BOOL_TNODE*, unsigned>;

void count_paths(BOOL_TNODE* node, PATHS& counts)
{
    if (node != nullptr) {
        ++counts[node];
        if (!basbd_is_leaf(*node)) {
            count_paths(node->left, counts);
            count_paths(node->right, counts);
        }
    }
}

/// Everything that stands in a tree.
struct CONTENTS {
    explicit CONTENTS(BOOL_TNODE* root)
    {
        count_paths(root, paths);
        for (const auto& [node, count] : paths) {
            if (!basbd_is_leaf(*node)) {
                operators.insert(node->op);
            } else if (basbd_leaf_signal(*node) != nullptr) {
                support.insert(basbd_leaf_signal(*node));
            }
            leaves += basbd_is_leaf(*node) ? count : 0;
        }
    }
    PATHS paths;
    std::set<int> operators;
    std::set<TECHMAP_SIG*> support;
    unsigned leaves = 0;
};

/// Whether every operator has two operands that are no constants.
bool is_reduced(const BOOL_TNODE* node)
{
    const auto is_operand = [](const BOOL_TNODE* child) {
        return child != nullptr && child->op < BOOL_OP_ONE && is_reduced(child);
    };
    return basbd_is_leaf(*node) || (is_operand(node->left) && is_operand(node->right));
}

/// The definition of `issigcompl`, word by word.
bool last_edge_flag(BOOL_TNODE* node, TECHMAP_SIG* sig)
{
    for (const bool right : {true, false}) {
        BOOL_TNODE* const child = right ? node->right : node->left;
        if (child != nullptr && child->issiginsuppt(sig)) {
            const bool flag = (right ? node->rcompl : node->lcompl) != 0;
            return basbd_is_leaf(*child) ? flag : last_edge_flag(child, sig);
        }
    }
    return false;
}

/// Reads an equation back: one operator at each level, parentheses around any other.
bool read_equation(const char*& text, unsigned assignment)
{
    const auto read_operand = [&]() -> bool {
        const bool is_complemented = *text == '~';
        text += is_complemented ? 1 : 0;
        bool value = false;
        if (*text == '(') {
            value = read_equation(++text, assignment);
            EXPECT_EQ(*text, ')');
        } else {
            value = *text == '1' || (*text >= 'A' && ((assignment >> (*text - 'A')) & 1U) != 0);
        }
        ++text;
        return value != is_complemented;
    };
    const bool left = read_operand();
    const char op = *text;
    if (op != '*' && op != '@' && op != '+') {
        return left;
    }
    const bool right = read_equation(++text, assignment);
    return op == '*' ? left && right : op == '@' ? left != right : left || right;
}

} // namespace

TEST(values, cleaning_keeps_the_value_of_a_copy_and_reduces)
{
    for_random_functions(any_shape, [](BOOL_FUNC& f, auto&) {
        const COLUMN before = column(f, signals, LONE_RIGHT::IS_OPERAND);
        BOOL_FUNC copy(&f);
        EXPECT_EQ(shape(copy.root), shape(f.root));
        EXPECT_EQ(copy.root->usage, f.root->usage);
        copy.cleanbufs();
        ASSERT_EQ(column(copy, signals), before);
        EXPECT_TRUE(is_reduced(copy.root)) << shape(copy.root);
        const bool is_constant = copy.root->op >= BOOL_OP_ONE;
        EXPECT_FALSE(is_constant && copy.rootcompl != 0);
        EXPECT_EQ(f.islogic1(), is_constant && before[0]);
        EXPECT_EQ(f.islogic0(), is_constant && !before[0]);
        EXPECT_EQ(copy.nsuppt, CONTENTS(copy.root).support.size());
    });
}

TEST(values, pushing_complements_keeps_the_value)
{
    for_random_functions(any_shape, [](BOOL_FUNC& f, auto&) {
        const COLUMN before = column(f, signals, LONE_RIGHT::IS_OPERAND);
        const char op = f.getpurefunc();
        ASSERT_EQ(column(f, signals), before);
        const std::string text = shape(f.root);
        for (const char* complemented : {"~AND", "~XOR", "~OR"}) {
            EXPECT_EQ(text.find(complemented), std::string::npos) << text;
        }
        const auto ops = CONTENTS(f.root).operators;
        EXPECT_EQ(op, ops.size() == 1 ? *ops.begin() : 22) << text;
    });
}

TEST(values, edits_by_signal)
{
    SHAPES shapes = any_shape;
    shapes.lone_right = false;
    for_random_functions(shapes, [&](BOOL_FUNC& f, auto& random) {
        const unsigned i = random() % signals;
        const unsigned j = random() % signals;
        const COLUMN before = column(f, signals);
        const auto expect = [&](auto edit, auto source) {
            BOOL_FUNC edited(&f);
            edit(edited);
            EXPECT_EQ(column(edited, signals), permuted(before, source)) << shape(edited.root);
        };
        expect([&](auto& g) { g.setsigto1(signal(i)); },
               [&](unsigned a) { return with_bit(a, i, true); });
        expect([&](auto& g) { g.setsigto0(signal(i)); },
               [&](unsigned a) { return with_bit(a, i, false); });
        expect([&](auto& g) { g.subsig1forsig2(signal(j), signal(i)); },
               [&](unsigned a) { return with_bit(a, i, (a >> j & 1U) != 0); });
        BOOL_FUNC other;
        other.root = random_tree(random, shapes);
        other.rootcompl = random() % 2;
        const COLUMN inner = column(other, signals);
        expect([&](auto& g) { g.substfnforsig(signal(i), &other); },
               [&](unsigned a) { return with_bit(a, i, inner[a]); });
        f.complsiginfunc(signal(i)); // on the function itself, whose nodes may be shared
        EXPECT_EQ(column(f, signals), permuted(before, [&](unsigned a) { return a ^ 1U << i; }));
        f.substfnforsig(signal(i), &other);
    });
}

TEST(values, questions)
{
    SHAPES shapes = any_shape;
    shapes.named = true;
    for_random_functions(shapes, [](BOOL_FUNC& f, auto& random) {
        TECHMAP_SIG* const sig = signal(random() % signals);
        const CONTENTS contents(f.root);
        const bool occurs = contents.support.count(sig) != 0;
        EXPECT_EQ(f.countsuppt(), contents.support.size());
        EXPECT_EQ(f.root->issiginsuppt(sig), occurs);
        const auto name = static_cast<BOOL_VARNAME>(sig - signal(0));
        EXPECT_EQ(f.root->isvarinsuppt(name), occurs);
        EXPECT_EQ(f.getvarname(sig), occurs ? name : BOOL_VAR_NONE);
        EXPECT_EQ(f.root->issigcompl(sig), !basbd_is_leaf(*f.root) && last_edge_flag(f.root, sig));
        f.root->unmarknodes();
        f.root->markusage();
        for (const auto& [node, count] : contents.paths) {
            EXPECT_EQ(node->usage, count);
        }
        EXPECT_EQ(f.root->countleaves(), contents.leaves);
    });
}

TEST(values, equation_reads_back)
{
    SHAPES shapes = any_shape;
    shapes.named = true;
    for_random_functions(shapes, [](BOOL_FUNC& f, auto&) {
        const std::unique_ptr<char[]> text(f.writeeqn());
        COLUMN values;
        for (unsigned assignment = 0; assignment < 1U << signals; ++assignment) {
            const char* rest = text.get();
            values.push_back(read_equation(rest, assignment));
            ASSERT_EQ(*rest, '\0') << text.get();
        }
        EXPECT_EQ(values, column(f, signals)) << text.get();
    });
}

TEST(values, support_of_many_signals_counts_twenty)
{
    BOOL_FUNC function(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A);
    BOOL_FUNC other(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A);
    for (unsigned i = 0; i < 21; ++i) {
        function.addsigtofunc(signal(i), 0);
        other.addsigtofunc(signal(i % 2 == 0 ? i : 31), 1);
        EXPECT_EQ(function.countsuppt(), std::min(i + 1, 20U));
    }
    EXPECT_EQ(function.nsuppt, 21);
    EXPECT_EQ(other.countsuppt(), 12);
    function.setsigto0(signal(4));
    EXPECT_EQ(function.nsuppt, 20);
    EXPECT_EQ(other.countsupptunion(&function), 20);
    EXPECT_EQ(other.countsupptunion(nullptr), 12);
}
