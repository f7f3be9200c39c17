#include "ut_fastmem.h"

#include "block_pool.h"

class UT_FASTMEM::STATE : public BlockPool {
public:
    using BlockPool::BlockPool;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk)
    : state(new STATE(block_size, blocks_per_chunk))
{
}

UT_FASTMEM::~UT_FASTMEM() { delete state; }

void* UT_FASTMEM::getnewptr() { return state->take(); }

void UT_FASTMEM::free(void* block) { state->put_back(block); }
