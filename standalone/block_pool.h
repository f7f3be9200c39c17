/// @file
/// @brief The pool under tree nodes and under the nodes of `UT_BTR_TREE`.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

/// @brief Hands out blocks of one size, each time from memory near the last one's.
///
/// ```
///     span     [ chunk | chunk | chunk ... ]      from the heap
///     chunk    [ header | block block block ... ] starts at a multiple of its size
/// ```
/// Every chunk keeps its own free list, and a chunk whose last block comes back hands its blocks
/// out in order again. Freeing and making large trees over and over so leaves them in memory as
/// the first time; one list of all free blocks would end up in random order.
///
/// To AddressSanitizer a block that is not handed out is out of bounds.
class BlockPool {
public:
    /// A chunk has at least `blocks_per_chunk` blocks. Nothing is allocated before the first use.
    BlockPool(std::size_t block_size, std::size_t blocks_per_chunk);
    BlockPool(const BlockPool&) = delete;
    BlockPool& operator=(const BlockPool&) = delete;

    void* take();               ///< A block; throws std::bad_alloc.
    void put_back(void* block); ///< A block that `take` answered.

private:
    struct Link {
        Link* next;
    };
    struct Chunk {
        Link* free;         ///< blocks that came back
        std::byte* fresh;   ///< the first block that was never handed out since the chunk was empty
        std::byte* end;     ///< behind the last block
        std::size_t used;   ///< blocks handed out
        Chunk* next_usable; ///< next in the list of chunks with blocks to hand out
        bool is_usable;     ///< whether it is in that list, or the current one
    };
    struct AlignedDelete {
        std::align_val_t alignment;
        void operator()(std::byte* span) const { ::operator delete(span, alignment); }
    };

    static std::byte* first_block(Chunk& chunk);
    Chunk& chunk_of(void* block) const;
    void make_usable(Chunk& chunk);
    void add_span();

    std::size_t block_size;
    std::size_t chunk_size; ///< a power of two
    std::size_t chunk_count = 0;
    Chunk* current = nullptr; ///< the first of the usable chunks
    std::vector<std::unique_ptr<std::byte, AlignedDelete>> spans;
};
