/// @file
/// @brief The truth table of a cell.
#pragma once

#include "basbdtt.h"
#include "expression.h"

namespace cellfn {

/// @brief The truth table of an expression: pin i is input i.
///
/// An expression without pins gets a table of one input, on which it does not depend.
BOOL_TRUTH_TABLE to_table(const expression& source);

} // namespace cellfn
