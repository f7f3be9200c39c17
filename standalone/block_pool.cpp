#include "block_pool.h"

#include <algorithm>
#include <cstdint>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#endif

namespace {

// A span is to be a small part of the pool, for half of the newest is unused on average, and yet
// large where the pool is large.
constexpr std::size_t growth_divisor = 32;
constexpr std::size_t largest_span = 64; // chunks

void forbid([[maybe_unused]] void* start, [[maybe_unused]] std::size_t size)
{
#ifdef __SANITIZE_ADDRESS__
    __asan_poison_memory_region(start, size);
#endif
}

void allow([[maybe_unused]] void* start, [[maybe_unused]] std::size_t size)
{
#ifdef __SANITIZE_ADDRESS__
    __asan_unpoison_memory_region(start, size);
#endif
}

std::size_t rounded_up(std::size_t size, std::size_t unit)
{
    return (size + unit - 1) / unit * unit;
}

std::size_t power_of_two_above(std::size_t size)
{
    std::size_t power = 1;
    while (power < size) {
        power *= 2;
    }
    return power;
}

} // namespace

BlockPool::BlockPool(std::size_t size, std::size_t blocks_per_chunk)
    : block_size(rounded_up(std::max(size, sizeof(Link)), alignof(Link))),
      chunk_size(power_of_two_above(sizeof(Chunk) +
                                    block_size * std::max<std::size_t>(blocks_per_chunk, 1)))
{
}

void* BlockPool::take()
{
    // A chunk with nothing left leaves the list only here, when the next block is asked for.
    while (current != nullptr && current->free == nullptr && current->fresh == current->end) {
        current->is_usable = false;
        current = current->next_usable;
    }
    if (current == nullptr) {
        add_span();
    }
    Chunk& chunk = *current;
    ++chunk.used;
    void* block = chunk.free;
    if (block == nullptr) {
        block = chunk.fresh;
        chunk.fresh += block_size;
        allow(block, block_size);
    } else {
        allow(block, block_size);
        chunk.free = chunk.free->next;
    }
    return block;
}

void BlockPool::put_back(void* block)
{
    Chunk& chunk = chunk_of(block);
    if (--chunk.used == 0) {
        chunk.free = nullptr;
        chunk.fresh = first_block(chunk);
    } else {
        chunk.free = new (block) Link{chunk.free};
    }
    forbid(block, block_size);
    make_usable(chunk);
}

std::byte* BlockPool::first_block(Chunk& chunk) { return reinterpret_cast<std::byte*>(&chunk + 1); }

BlockPool::Chunk& BlockPool::chunk_of(void* block) const
{
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(block) & (chunk_size - 1);
    return *reinterpret_cast<Chunk*>(static_cast<std::byte*>(block) - offset);
}

void BlockPool::make_usable(Chunk& chunk)
{
    if (!chunk.is_usable) {
        chunk.is_usable = true;
        chunk.next_usable = current;
        current = &chunk;
    }
}

void BlockPool::add_span()
{
    const std::align_val_t alignment{chunk_size};
    const std::size_t chunks =
        std::clamp<std::size_t>(chunk_count / growth_divisor, 1, largest_span);
    const std::size_t size = chunks * chunk_size;
    spans.reserve(spans.size() + 1);
    spans.emplace_back(static_cast<std::byte*>(::operator new(size, alignment)),
                       AlignedDelete{alignment});
    std::byte* const span = spans.back().get();
    for (std::size_t offset = size; offset > 0;) {
        offset -= chunk_size;
        auto* chunk = new (span + offset) Chunk{};
        const std::size_t blocks = (chunk_size - sizeof(Chunk)) / block_size;
        chunk->fresh = first_block(*chunk);
        chunk->end = chunk->fresh + blocks * block_size;
        forbid(chunk->fresh, blocks * block_size);
        make_usable(*chunk);
    }
    chunk_count += chunks;
}
