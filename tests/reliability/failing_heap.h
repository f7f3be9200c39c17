/// @file
/// @brief The process's `operator new` and the node pool, made to fail on demand.
///
/// Both are replaced in the test program, which reaches into the shared libraries as well.
#pragma once

namespace failing_heap {

enum class FAIL {
    ONCE,      ///< one allocation
    FROM_THERE ///< that allocation and all after it
};

/// Makes the allocation number `at`, counted from 1 and from now, fail.
void arm(long at, FAIL mode);

/// Lets allocations succeed again. @return the number that has failed since `arm`
long disarm();

/// Blocks of `operator new` and of the pool that are in use.
long live_blocks();

/// The allocations that have failed since the start of the process.
long failures();

} // namespace failing_heap
