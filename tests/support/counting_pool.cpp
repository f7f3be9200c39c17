#include "counting_pool.h"

#include "ut_fastmem.h"

#include <new>

namespace {

// Constant initialisation only: the pool is made before any constructor of this program.
long live_blocks = 0;
counting_pool::sizes asked_for{};

} // namespace

class UT_FASTMEM::STATE {
public:
    unsigned long block_size;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk)
    : state(new STATE{block_size})
{
    asked_for = {block_size, blocks_per_chunk};
}

UT_FASTMEM::~UT_FASTMEM() { delete state; }

void* UT_FASTMEM::getnewptr()
{
    ++live_blocks;
    return ::operator new(state->block_size);
}

void UT_FASTMEM::free(void* block)
{
    --live_blocks;
    ::operator delete(block);
}

long counting_pool::live() { return live_blocks; }

counting_pool::sizes counting_pool::made_with() { return asked_for; }
