/// @file
/// @brief A node pool that counts. Link it to take the stand-in's place; each block comes from the
/// heap, so the sanitizers see every misuse.
#pragma once

namespace counting_pool {

/// Blocks that were taken and not given back.
long live();

/// The arguments with which the pool was made.
struct sizes {
    unsigned long block;
    unsigned long blocks_per_chunk;
};
sizes made_with();

} // namespace counting_pool
