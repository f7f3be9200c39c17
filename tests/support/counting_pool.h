/// @file
/// @brief A node pool that counts. Link it to take the stand-in's place; each block comes from the
/// heap, so the sanitizers see every misuse.
#pragma once

#include <vector>

namespace counting_pool {

/// Blocks that were taken and not given back.
long live();

/// The arguments with which the pool was made.
struct sizes {
    unsigned long block;
    unsigned long blocks_per_chunk;
};
sizes made_with();

/// From now on numbers the blocks that are taken, from 1, and adds each number to `log`; negated
/// when the block comes back. Null ends that.
void record(std::vector<long>* log);

} // namespace counting_pool
