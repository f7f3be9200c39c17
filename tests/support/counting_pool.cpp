#include "counting_pool.h"

#include "ut_fastmem.h"

#include <new>

namespace {

long live_blocks = 0;
long requests_left = -1;

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
    if (requests_left == 0) {
        throw std::bad_alloc();
    }
    requests_left -= requests_left > 0 ? 1 : 0;
    ++live_blocks;
    return ::operator new(state->block_size);
}

void UT_FASTMEM::free(void* block)
{
    --live_blocks;
    ::operator delete(block);
}

namespace counting_pool {

long live() { return live_blocks; }

void fail_after(long count) { requests_left = count; }

} // namespace counting_pool
