/// @file
/// @brief The process's `operator new`, made to fail on demand.
///
/// It is replaced in the test program, which reaches into the shared libraries as well; a node pool
/// that takes each block from it fails with it.
#pragma once

namespace failing_heap {

/// Of the allocations from now on, counted from 1, `first` to `last` fail.
void arm(long first, long last);

/// Lets allocations succeed again. @return the number that has failed since `arm`
long disarm();

/// Blocks in use.
long live_blocks();

} // namespace failing_heap
