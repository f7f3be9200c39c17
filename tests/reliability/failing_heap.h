/// @file
/// @brief The process's `operator new`, made to fail on demand.
///
/// It is replaced in the test program, which reaches into the shared libraries as well; a node pool
/// that takes each block from it fails with it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace failing_heap {

/// Of the allocations from now on, counted from 1, `first` to `last` fail.
void arm(long first, long last);

/// From now on, allocations of more than `bytes` fail, and those after which more than `total` are
/// in use.
void refuse_above(std::size_t bytes, std::size_t total = SIZE_MAX);

/// Lets allocations succeed again. @return the number that has failed since `arm`
long disarm();

/// Blocks in use.
long live_blocks();

/// Bytes in use, and the most of them since `refuse_above`.
std::size_t live_bytes();
std::size_t peak_bytes();

} // namespace failing_heap
