/// @file
/// @brief The internal-error reports of the BDD engine.
#pragma once

namespace basbdd {

/// Every report site. The value is the line that the report carries: a fixed number that tells
/// the site, whatever line the code stands in today.
// clang-format off: a table
enum class report_site : int {
    // site                   line    operation                   condition
    node_without_high = 97,     // BDD_NODE::printbddexpr      the high edge is null
    node_without_low = 117,     // BDD_NODE::printbddexpr      the low edge is null
    copy_of_null = 150,         // BDD_FUNC(BDD_FUNC*)         src is null
    conversion_of_null = 166,   // BDD_FUNC(.., BOOL_FUNC*..)  f is null
    other_manager = 202,        // BDD_FUNC::substfnforsig     fn has another manager
    other_capacity = 205,       // BDD_FUNC::substfnforsig     fn has another nvars
    function_without_bdd = 241, // BDD_FUNC::printbddexpr      the function's edge is null
    second_constants = 375,     // BDD_MANAGER::mkconstants    both constants are there already
    unknown_signal = 563,       // BOOL_TNODE::treetobdd       no variable for the signal of a leaf
    unknown_operator = 586,     // BOOL_TNODE::treetobdd       an operator other than AND, XOR, OR
};
// clang-format on

/// Tells the host's message manager; the reporting operation then goes on.
[[gnu::cold]] void report(report_site site);

} // namespace basbdd
