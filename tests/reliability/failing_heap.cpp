#include "failing_heap.h"

#include "ut_fastmem.h"

#include <cstdlib>
#include <new>

namespace failing_heap {

// Constant initialisation: allocations come before any constructor of this file would run.
static bool armed = false;
static FAIL mode_in_use = FAIL::ONCE;
static long until_failure = 0;
static long failed_since_arm = 0;
static long failed_in_all = 0;
static long live = 0;

void arm(long at, FAIL mode)
{
    until_failure = at;
    mode_in_use = mode;
    failed_since_arm = 0;
    armed = true;
}

long disarm()
{
    armed = false;
    failed_in_all += failed_since_arm;
    return failed_since_arm;
}

long live_blocks() { return live; }

long failures() { return failed_in_all; }

static bool this_one_fails()
{
    --until_failure;
    return armed && (until_failure == 0 || (until_failure < 0 && mode_in_use == FAIL::FROM_THERE));
}

} // namespace failing_heap

using namespace failing_heap;

// The other forms call these, except under AddressSanitizer, which has its own.
void* operator new(std::size_t size)
{
    void* block = this_one_fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        ++failed_since_arm;
        throw std::bad_alloc();
    }
    ++live;
    return block;
}
void operator delete(void* block) noexcept
{
    live -= block == nullptr ? 0 : 1;
    std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }

/// A pool without chunks: every node is a block of its own, which can fail and can leak.
class UT_FASTMEM::STATE {
public:
    unsigned long block_size;
};

UT_FASTMEM::UT_FASTMEM(unsigned long size, unsigned long /*count*/) : state(new STATE{size}) {}
UT_FASTMEM::~UT_FASTMEM() { delete state; }
void* UT_FASTMEM::getnewptr() { return ::operator new(state->block_size); }
void UT_FASTMEM::free(void* block) { ::operator delete(block); }
