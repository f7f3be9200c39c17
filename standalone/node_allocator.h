/// @file
/// @brief An allocator for containers that allocate one node at a time.
#pragma once

#define BOOST_POOL_NO_MT // a container is used from one thread at a time
#include <boost/pool/pool.hpp>

#include <cstddef>
#include <new>
#include <optional>

/// @brief The pool behind a container's allocator; outlives the container.
///
/// Its chunks start small, for the sake of small containers, and double.
class NodePool {
public:
    NodePool() = default;
    NodePool(const NodePool&) = delete;
    NodePool& operator=(const NodePool&) = delete;

    void* take(std::size_t size)
    {
        if (!blocks) {
            blocks.emplace(size, first_chunk, largest_chunk);
        }
        void* block = blocks->malloc();
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        return block;
    }
    void put_back(void* block) { blocks->free(block); }

private:
    static constexpr std::size_t first_chunk = 16;
    static constexpr std::size_t largest_chunk = 512;
    std::optional<boost::pool<>> blocks; ///< made when the container tells the size of its nodes
};

template <typename T>
class NodeAllocator {
public:
    using value_type = T;

    explicit NodeAllocator(NodePool& source) : pool(&source) {}
    template <typename U>
    // Not explicit: containers convert their allocators.
    NodeAllocator(const NodeAllocator<U>& other) : pool(other.pool)
    {
    }

    T* allocate(std::size_t /*count: 1*/) { return static_cast<T*>(pool->take(sizeof(T))); }
    void deallocate(T* node, std::size_t /*count: 1*/) { pool->put_back(node); }

    friend bool operator==(const NodeAllocator& a, const NodeAllocator& b)
    {
        return a.pool == b.pool;
    }
    friend bool operator!=(const NodeAllocator& a, const NodeAllocator& b) { return !(a == b); }

    NodePool* pool;
};
