#include "ut_fastmem.h"

#include <boost/pool/pool.hpp>

#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <new>
#include <optional>
#include <utility>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#endif

namespace {

/// A free block in a list.
struct free_block {
    free_block* next;
    free_block* next_list; ///< in the first block of a list that waits for a thread
};

void allow([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size)
{
#ifdef __SANITIZE_ADDRESS__
    __asan_unpoison_memory_region(block, size);
#endif
}
/// To AddressSanitizer a free block is out of bounds, but for the link to the next.
void forbid([[maybe_unused]] void* block, [[maybe_unused]] std::size_t size)
{
#ifdef __SANITIZE_ADDRESS__
    __asan_poison_memory_region(static_cast<free_block**>(block) + 1, size - sizeof(free_block*));
#endif
}

/// @brief What a thread has of the listed pool, to take from and to put into without a lock.
///
/// Only puts are counted; counting both costs twice that. When the count runs out, the list is
/// measured.
struct thread_list {
    free_block* first;
    std::ptrdiff_t puts_left; ///< until it is measured; 0 until the thread's end handler is set
};

/// At a place that is fixed when the process starts, so that no access is a call.
[[gnu::tls_model("initial-exec")]] thread_local thread_list mine;

/// The first pool of the process. None follows it once it is gone: threads keep their lists of it.
std::atomic<const UT_FASTMEM*> listed_pool = nullptr;
bool was_listed = false;

std::mutex pools_lock; ///< guards all pools; the threads' lists need none

/// Blocks of one size, and the free ones among them that no thread has.
class shared_blocks {
public:
    shared_blocks(std::size_t size, std::size_t blocks_per_chunk)
        : block_size(std::max(size, sizeof(free_block))), list_size(blocks_per_chunk),
          chunks(block_size, list_size, list_size)
    {
    }

    /// @return at least one block
    free_block* take_list()
    {
        if (lists == nullptr) {
            return new_list();
        }
        allow(lists, block_size);
        free_block* const list = std::exchange(lists, lists->next_list);
        forbid(list, block_size);
        return list;
    }

    /// Takes back a list, which may be empty.
    void keep(free_block* list)
    {
        if (list != nullptr) {
            allow(list, block_size);
            list->next_list = std::exchange(lists, list);
            forbid(list, block_size);
        }
    }

    /// Cuts a list after its first `list_size` blocks. @return the rest
    free_block* cut(free_block* list) const
    {
        for (std::size_t i = 1; i < list_size && list->next != nullptr; ++i) {
            list = list->next;
        }
        return std::exchange(list->next, nullptr);
    }

    const std::size_t block_size;
    const std::size_t list_size; ///< of a new list, and of what is left of one that is cut

private:
    /// In the order of the heap, as what is taken together is mostly read together.
    free_block* new_list()
    {
        free_block* list = nullptr;
        free_block** end = &list;
        for (std::size_t i = 0; i < list_size; ++i) {
            void* const block = chunks.malloc();
            if (block == nullptr) {
                break;
            }
            *end = ::new (block) free_block{nullptr, nullptr};
            end = &(*end)->next;
            forbid(block, block_size);
        }
        return list != nullptr ? list : throw std::bad_alloc();
    }

    boost::pool<> chunks;
    free_block* lists = nullptr;
};

} // namespace

class UT_FASTMEM::STATE : public shared_blocks {
public:
    using shared_blocks::shared_blocks;
};

namespace {

/// A thread's list grows to so many times the size of a new one, and is then cut.
constexpr std::size_t most_of_new_lists = 16;

std::ptrdiff_t puts_after_cut(const UT_FASTMEM& pool)
{
    return static_cast<std::ptrdiff_t>((most_of_new_lists - 1) * pool.state->list_size);
}

/// Few, as a list that is taken may be long already.
std::ptrdiff_t puts_after_take(const UT_FASTMEM& pool)
{
    return static_cast<std::ptrdiff_t>(pool.state->list_size);
}

void keep_list_of_ended_thread(void* /*mine*/)
{
    const std::lock_guard guard(pools_lock);
    free_block* const list = std::exchange(mine, {}).first;
    if (const UT_FASTMEM* const pool = listed_pool; pool != nullptr && list != nullptr) {
        pool->state->keep(pool->state->cut(list));
        pool->state->keep(list);
    }
}

/// @brief Whether the calling thread may have a list of `pool`: only if its end handler could be
/// set. That runs after thread-local destructors, which may free blocks.
bool may_have_list(const UT_FASTMEM& pool)
{
    static const std::optional<pthread_key_t> key = [] {
        pthread_key_t made{};
        return pthread_key_create(&made, keep_list_of_ended_thread) == 0 ? std::optional(made)
                                                                         : std::nullopt;
    }();
    return &pool == listed_pool && key.has_value() && pthread_setspecific(*key, &mine) == 0;
}

// These two apart, so that a block costs no saved registers for the sake of the one in hundreds.
[[gnu::noinline, gnu::cold]] free_block* take_from_pool(const UT_FASTMEM& pool)
{
    const std::lock_guard guard(pools_lock);
    free_block* const block = pool.state->take_list();
    if (may_have_list(pool)) {
        mine = {block->next, puts_after_take(pool)};
    } else {
        pool.state->keep(block->next);
    }
    return block;
}

[[gnu::noinline, gnu::cold]] void put_into_pool(const UT_FASTMEM& pool, free_block* block)
{
    free_block* list = block;
    block->next = nullptr;
    if (may_have_list(pool)) {
        block->next = mine.first;
        mine = {block, puts_after_cut(pool)};
        list = pool.state->cut(block);
    }
    const std::lock_guard guard(pools_lock);
    pool.state->keep(list);
}

bool is_listed(const UT_FASTMEM& pool)
{
    return listed_pool.load(std::memory_order_relaxed) == &pool;
}

} // namespace

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk)
    : state(new STATE(block_size, std::max(blocks_per_chunk, 1UL)))
{
    const std::lock_guard guard(pools_lock);
    if (!std::exchange(was_listed, true)) {
        listed_pool = this;
    }
}

UT_FASTMEM::~UT_FASTMEM()
{
    const std::lock_guard guard(pools_lock);
    if (is_listed(*this)) {
        listed_pool = nullptr;
    }
    delete state;
}

void* UT_FASTMEM::getnewptr()
{
    free_block* block = mine.first;
    if (is_listed(*this) && block != nullptr) {
        mine.first = block->next;
    } else {
        block = take_from_pool(*this);
    }
    allow(block, state->block_size);
    return block;
}

void UT_FASTMEM::free(void* block)
{
    forbid(block, state->block_size);
    auto* const freed = ::new (block) free_block;
    if (is_listed(*this) && --mine.puts_left >= 0) {
        freed->next = std::exchange(mine.first, freed);
    } else {
        put_into_pool(*this, freed);
    }
}
