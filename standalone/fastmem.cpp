#include "ut_fastmem.h"

#define BOOST_POOL_NO_MT // a pool is used from one thread at a time
#include <boost/pool/pool.hpp>

#include <algorithm>
#include <cstddef>
#include <new>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(start, size) static_cast<void>(start)
#define ASAN_UNPOISON_MEMORY_REGION(start, size) static_cast<void>(start)
#endif

/// A free list through chunks of one size. To AddressSanitizer a block that was taken back is out
/// of bounds, but for the link of the list.
class UT_FASTMEM::STATE {
public:
    STATE(std::size_t size, std::size_t per_chunk)
        : block_size(std::max(size, sizeof(Link))),
          blocks(block_size, std::max<std::size_t>(per_chunk, 1),
                 std::max<std::size_t>(per_chunk, 1))
    {
    }

    void* take()
    {
        void* block = blocks.malloc();
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        ASAN_UNPOISON_MEMORY_REGION(behind_link(block), block_size - sizeof(Link));
        return block;
    }

    void put_back(void* block)
    {
        ASAN_POISON_MEMORY_REGION(behind_link(block), block_size - sizeof(Link));
        blocks.free(block);
    }

private:
    using Link = void*;
    static void* behind_link(void* block) { return static_cast<Link*>(block) + 1; }

    std::size_t block_size;
    boost::pool<> blocks;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk)
    : state(new STATE(block_size, blocks_per_chunk))
{
}

UT_FASTMEM::~UT_FASTMEM() { delete state; }

void* UT_FASTMEM::getnewptr() { return state->take(); }

void UT_FASTMEM::free(void* block) { state->put_back(block); }
