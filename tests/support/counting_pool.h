/// @file
/// @brief A node pool that counts. Link it to take the stand-in's place; each block comes from the
/// heap, so the sanitizers see every misuse.
#pragma once

namespace counting_pool {

/// Blocks that were taken and not given back.
long live();

} // namespace counting_pool
