/// @file
/// @brief The process-wide table of variable names.
#pragma once

#include "basbdbool.h"

#include <atomic>

namespace basbdbool {

/// Number of variable names.
constexpr int name_count = BOOL_VAR_NONE;

/// @brief Fixes the table for good, unless an earlier call has.
/// @param names  texts to copy for the names 0 to `last`; null for the default texts
void choose_name_table(char const** names, BOOL_VARNAME last);

/// The default texts, then those of the chosen table, stored once it is complete.
extern std::atomic<const char* const*> varnametbl;

/// The text of name `v`, 0 to 16: null where the table in use has none.
inline const char* name_text(int v) { return varnametbl.load(std::memory_order_acquire)[v]; }

/// The op code of a leaf named `v`.
constexpr signed char named_op(int v) { return static_cast<signed char>(v + BOOL_OP_FIRST_NAMED); }

/// Whether `v` names a variable at all.
constexpr bool is_name(BOOL_VARNAME v) { return v >= BOOL_VAR_A && v <= BOOL_VAR_QY; }

inline bool is_named_leaf(const BOOL_TNODE& node)
{
    return node.op >= BOOL_OP_FIRST_NAMED && node.op <= BOOL_OP_LAST_NAMED;
}

/// The name of a named leaf.
inline BOOL_VARNAME leaf_name(const BOOL_TNODE& leaf)
{
    return static_cast<BOOL_VARNAME>(leaf.op - BOOL_OP_FIRST_NAMED);
}

} // namespace basbdbool
