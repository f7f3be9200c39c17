/// @file
/// @brief Finds the bindings with which a cell implements a function.
#pragma once

#include "binding.h"
#include "signature.h"

#include <functional>

namespace cellfn {

/// @brief A function to be matched and its signature, which many searches share.
struct matchable {
    explicit matchable(const BOOL_TRUTH_TABLE& table) : function(table), traits(function.table) {}
    reduced_function function;
    signature traits;
};

/// Which bindings are wanted.
struct match_options {
    bool exact = false; ///< inputs are exchanged only, nothing is complemented
    bool all = false; ///< every binding and not just one; without it one that is exact comes first
};

/// @brief Calls `found` for the bindings of `cell` that implement `target`, each of them applied
/// and checked before.
/// @return whether there is one
bool match_cell(const matchable& cell, const matchable& target, match_options options,
                const std::function<void(const binding&)>& found);

} // namespace cellfn
