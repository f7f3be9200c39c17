#include "ut_fastmem.h"

#include <memory_resource>

/// A pool resource whose one block size is fixed.
class UT_FASTMEM::STATE {
public:
    STATE(std::size_t block, std::size_t per_chunk)
        : block_size(block), pool(std::pmr::pool_options{per_chunk, block})
    {
    }
    std::size_t block_size;
    std::pmr::unsynchronized_pool_resource pool;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk)
    : state(new STATE(block_size, blocks_per_chunk))
{
}

UT_FASTMEM::~UT_FASTMEM() { delete state; }

void* UT_FASTMEM::getnewptr() { return state->pool.allocate(state->block_size); }

void UT_FASTMEM::free(void* block) { state->pool.deallocate(block, state->block_size); }
