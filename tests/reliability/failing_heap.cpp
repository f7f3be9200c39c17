#include "failing_heap.h"

#include "ut_msgman.h"
#include "ut_text.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

// Constant initialisation: allocations come before any constructor of this file would run.
static long first_failing = 0;
static long last_failing = 0;
static long count = 0;
static long failed = 0;
static long live = 0;
static std::size_t largest = SIZE_MAX;
static std::size_t most_in_use = SIZE_MAX;
static std::size_t in_use = 0;
static std::size_t peak = 0;

void failing_heap::arm(long first, long last)
{
    count = 0;
    first_failing = first;
    last_failing = last;
}

long failing_heap::disarm()
{
    last_failing = 0;
    refuse_above(SIZE_MAX);
    return std::exchange(failed, 0);
}

void failing_heap::refuse_above(std::size_t bytes, std::size_t total)
{
    largest = bytes;
    most_in_use = total;
    peak = in_use;
}

long failing_heap::live_blocks() { return live; }
std::size_t failing_heap::live_bytes() { return in_use; }
std::size_t failing_heap::peak_bytes() { return peak; }

/// Messages are of no interest here, and to keep them would take memory.
void ut_status(const char* text) { std::free(const_cast<char*>(text)); }
void UT_MSGMAN::report(const char* /*text*/, const char* /*app*/, char* id, int /*line*/,
                       const char* /*rev*/, int /*kind*/, void* /*extra*/)
{
    std::free(id);
}

// AddressSanitizer has every form of its own, so all that are in use are replaced.
void* operator new(std::size_t size)
{
    ++count;
    if ((first_failing <= count && count <= last_failing) || size > largest ||
        size > most_in_use - in_use) {
        ++failed;
        throw std::bad_alloc();
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
    ++live;
    in_use += malloc_usable_size(block);
    peak = std::max(peak, in_use);
    return block;
}
void operator delete(void* block) noexcept
{
    live -= block == nullptr ? 0 : 1;
    in_use -= malloc_usable_size(block);
    std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept { operator delete(block); }
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
try {
    return operator new(size);
} catch (const std::bad_alloc&) {
    return nullptr;
}
void operator delete[](void* block) noexcept { operator delete(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { operator delete(block); }
