/// @file
/// @brief A node pool that counts, and that fails when told to. Link it to take the stand-in's
/// place; each block comes from the heap, so the sanitizers see every misuse.
#pragma once

namespace counting_pool {

/// Blocks that were taken and not given back.
long live();

/// Lets the next `count` requests succeed and those after them fail; negative: none fails.
void fail_after(long count);

} // namespace counting_pool
