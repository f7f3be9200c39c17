/// @file
/// @brief Fake signals, trees written as text, random trees and an evaluator that shares nothing
/// with the library's own walks.
#pragma once

#include "basbdbool.h"

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

/// The library never looks inside, so any object with an address of its own will do.
class TECHMAP_SIG {};

namespace tree_oracle {

constexpr unsigned max_signals = 32;

/// The fake signal number `index`, below `max_signals`.
TECHMAP_SIG* signal(unsigned index);

/// @brief The values of a function, with its own complement, for the assignments 0, 1, ... of the
/// signals below `signals`; constant 0 without a tree, and for an operator without left operand.
std::vector<bool> column(const BOOL_FUNC& function, unsigned signals);

/// @brief The exact shape of a tree: `*(~a,+(bC,1))` is NOT s0 AND (s1 OR 1), s1 named C.
///
/// "*", "@" and "+" are the operators, "?" is any other; "~" is an edge's flag, "-" a missing
/// child, "!" a leaf's own flag; "X" and "Y" stand for the names QX and QY.
std::string shape(const BOOL_TNODE* node);

/// The shape of the tree, behind a "~" when the function is its complement.
std::string shape(const BOOL_FUNC& function);

/// The tree, or null, whose shape is `text`; signals from "a" to "z", no flags of leaves.
BOOL_TNODE* parse_shape(const char* text);

/// The function whose shape is `text`, with its support counted.
struct parsed_func : BOOL_FUNC {
    explicit parsed_func(const char* text);
};

/// How many paths lead to each node.
using path_counts = std::map<const BOOL_TNODE*, unsigned>;

/// Counts the paths below a node, which one leads to.
void count_paths(const BOOL_TNODE* node, path_counts& counts);

/// What random trees are made of besides constants and operators that lack operands.
struct tree_kind {
    unsigned signals = 4;    ///< leaves stand for the signals below this number
    unsigned depth = 5;      ///< operators on a path, at most
    bool lone_right = false; ///< operators with a right operand only
    bool shared = false;     ///< nodes that several parents refer to
};

/// A tree with complement flags everywhere, stale values in every `usage`, and the leaves of the
/// first signals named by their signal's number.
BOOL_TNODE* random_tree(std::mt19937& random, const tree_kind& shapes);

} // namespace tree_oracle
