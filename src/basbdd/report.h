/// @file
/// @brief Internal-error reports of the BDD engine.
#pragma once

/// All report sites; the value is the line that is reported.
enum class REPORT_SITE : int {
    //                        operation                     condition
    node_without_high = 97,     // BDD_NODE::printbddexpr     the high edge is null
    node_without_low = 117,     // BDD_NODE::printbddexpr     the low edge is null
    copy_of_null = 150,         // BDD_FUNC(BDD_FUNC*)        the source is null
    conversion_of_null = 166,   // BDD_FUNC(.., BOOL_FUNC*..) the tree function is null
    other_manager = 202,        // BDD_FUNC::substfnforsig    fn has another manager
    other_capacity = 205,       // BDD_FUNC::substfnforsig    fn has another nvars
    function_without_bdd = 241, // BDD_FUNC::printbddexpr   the function's edge is null
    second_constants = 375,     // BDD_MANAGER::mkconstants   both constants are there already
    unknown_signal = 563,       // BOOL_TNODE::treetobdd      no variable for the signal of a leaf
    unknown_operator = 586,     // BOOL_TNODE::treetobdd      an operator other than AND, XOR, OR
};

/// Sends the report of `site` to the host's message manager.
void report_internal_error(REPORT_SITE site);
