/// @file
/// @brief The host's pool of blocks of one size.
#pragma once

#include "ut_api.h"

/// @addtogroup services Host services
/// @{

/// @brief Hands out blocks of one size and takes them back.
///
/// The library makes its pool while it is loaded, before any constructor of the host has run. It
/// uses the pool from every thread that uses trees, at once; a block may come back on another.
class UT_API UT_FASTMEM {
public:
    /// @brief An empty pool, which takes its first chunk with the first block.
    /// @param block_size        bytes in a block
    /// @param blocks_per_chunk  blocks taken from the heap at a time
    UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk);
    UT_FASTMEM(const UT_FASTMEM&) = delete;
    UT_FASTMEM& operator=(const UT_FASTMEM&) = delete;
    ~UT_FASTMEM(); ///< frees all chunks, whether their blocks came back or not

    void* getnewptr();      ///< a fresh block, never null; throws std::bad_alloc
    void free(void* block); ///< takes a block back; does not throw

    class STATE;  ///< the host's own
    STATE* state; ///< the pool itself
};

/// @}
