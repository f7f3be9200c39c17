#include "failing_heap.h"

#include "ut_fastmem.h"

#include <cstdlib>
#include <new>

namespace {

// Constant initialisation: allocations come before any constructor of this file would run.
bool armed = false;
auto mode_in_use = failing_heap::FAIL::ONCE;
long until_failure = 0;
long failed_since_arm = 0;
long failed_in_all = 0;
long live = 0;

bool this_one_fails()
{
    if (!armed) {
        return false;
    }
    --until_failure;
    const bool fails =
        until_failure == 0 || (until_failure < 0 && mode_in_use == failing_heap::FAIL::FROM_THERE);
    failed_since_arm += fails ? 1 : 0;
    failed_in_all += fails ? 1 : 0;
    return fails;
}

void* allocate_or_null(std::size_t size)
{
    void* block = this_one_fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    live += block == nullptr ? 0 : 1;
    return block;
}

void* allocate(std::size_t size)
{
    void* block = allocate_or_null(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void release(void* block) noexcept
{
    live -= block == nullptr ? 0 : 1;
    std::free(block);
}

} // namespace

namespace failing_heap {

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
    return failed_since_arm;
}

long live_blocks() { return live; }

long failures() { return failed_in_all; }

} // namespace failing_heap

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate_or_null(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate_or_null(size);
}
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { release(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { release(block); }
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept { release(block); }
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept { release(block); }

/// A pool without chunks: every node is a block of its own, which can fail and can leak.
class UT_FASTMEM::STATE {
public:
    unsigned long block_size;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long /*blocks_per_chunk*/)
    : state(new STATE{block_size})
{
}

UT_FASTMEM::~UT_FASTMEM() { delete state; }

void* UT_FASTMEM::getnewptr() { return ::operator new(state->block_size); }

void UT_FASTMEM::free(void* block) { ::operator delete(block); }
