#include "counting_pool.h"

#include "ut_fastmem.h"

#include <cstddef>
#include <new>

namespace {

// Constant initialisation only: the pool is made before any constructor of this program.
long live_blocks = 0;
counting_pool::sizes asked_for{};
std::vector<long>* events = nullptr;
long last_number = 0;

/// Before each block stands its number.
constexpr std::size_t header_size = 16;

void note(long event)
{
    if (events != nullptr) {
        events->push_back(event);
    }
}

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
    auto* const header = static_cast<char*>(::operator new(header_size + state->block_size));
    ++live_blocks;
    note(*::new (header) long(++last_number));
    return header + header_size;
}

void UT_FASTMEM::free(void* block)
{
    --live_blocks;
    void* const header = static_cast<char*>(block) - header_size;
    note(-*static_cast<long*>(header));
    ::operator delete(header);
}

long counting_pool::live() { return live_blocks; }

counting_pool::sizes counting_pool::made_with() { return asked_for; }

void counting_pool::record(std::vector<long>* log)
{
    events = log;
    last_number = 0;
}
