/// @file
/// @brief The process's `operator new`, made to fail on demand.
///
/// It is replaced in the test program, which reaches into the shared libraries as well; a node pool
/// that takes each block from it fails with it.
#pragma once

#include <cstddef>

namespace failing_heap {

/// Of the allocations from now on, counted from 1, `first` to `last` fail.
void arm(long first, long last);

/// From now on, allocations of more bytes fail.
void refuse_above(std::size_t bytes);

/// Lets allocations succeed again. @return the number that has failed since `arm`
long disarm();

/// Blocks in use.
long live_blocks();

/// Bytes in use, and the most of them since `refuse_above`.
std::size_t live_bytes();
std::size_t peak_bytes();

} // namespace failing_heap
