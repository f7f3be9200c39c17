/// @file
/// @brief The empty table.
#include "basbdtt.h"

BOOL_TRUTH_TABLE::BOOL_TRUTH_TABLE() : value(1, 0), width(0) {}
