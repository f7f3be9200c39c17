/// @file
/// @brief The pool of the tree nodes, `BOOL_TNODE::fstmem`, made while the library is loaded.
#pragma once

#include "basbdbool.h"
