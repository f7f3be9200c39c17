/// @file
/// @brief The pool of the tree nodes, made while the library is loaded.
#pragma once

/// Blocks that the node pool takes from the heap at a time.
constexpr unsigned long BASBDVARS_NODES_PER_CHUNK = 500;
