/// @file
/// @brief The internal-error reports of the BDD engine.
#pragma once

/// Every report site. The value is the line that the report carries: a fixed number that tells
/// the site, whatever line the code stands in today.
// clang-format off: a table
enum class BDD_REPORT : int {
    // site                   line    operation                   condition
    NODE_WITHOUT_HIGH = 97,     // BDD_NODE::printbddexpr      the high edge is null
    NODE_WITHOUT_LOW = 117,     // BDD_NODE::printbddexpr      the low edge is null
    COPY_OF_NULL = 150,         // BDD_FUNC(BDD_FUNC*)         src is null
    CONVERSION_OF_NULL = 166,   // BDD_FUNC(.., BOOL_FUNC*..)  f is null
    OTHER_MANAGER = 202,        // BDD_FUNC::substfnforsig     fn has another manager
    OTHER_CAPACITY = 205,       // BDD_FUNC::substfnforsig     fn has another nvars
    FUNCTION_WITHOUT_BDD = 241, // BDD_FUNC::printbddexpr      the function's edge is null
    SECOND_CONSTANTS = 375,     // BDD_MANAGER::mkconstants    both constants are there already
    UNKNOWN_SIGNAL = 563,       // BOOL_TNODE::treetobdd       no variable for the signal of a leaf
    UNKNOWN_OPERATOR = 586,     // BOOL_TNODE::treetobdd       an operator other than AND, XOR, OR
};
// clang-format on

/// Tells the host's message manager; the reporting operation then goes on.
[[gnu::cold]] void report(BDD_REPORT site);
