#include "counting_pool.h"

#include "ut_fastmem.h"

#include <new>

namespace {

long live_blocks = 0;

} // namespace

class UT_FASTMEM::STATE {
public:
    unsigned long block_size;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long /*blocks_per_chunk*/)
    : state(new STATE{block_size})
{
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
