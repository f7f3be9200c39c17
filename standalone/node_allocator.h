/// @file
/// @brief An allocator for containers that allocate one node at a time.
#pragma once

#include "block_pool.h"

#include <cstddef>
#include <optional>

/// The pool behind a container's allocator, made when the container tells the size of its nodes.
using NodePool = std::optional<BlockPool>;

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

    T* allocate(std::size_t /*count: 1*/)
    {
        constexpr std::size_t blocks_per_chunk = 32; // few, for the sake of small containers
        if (!pool->has_value()) {
            pool->emplace(sizeof(T), blocks_per_chunk);
        }
        return static_cast<T*>((*pool)->take());
    }
    void deallocate(T* node, std::size_t /*count: 1*/) { (*pool)->put_back(node); }

    friend bool operator==(const NodeAllocator& a, const NodeAllocator& b)
    {
        return a.pool == b.pool;
    }
    friend bool operator!=(const NodeAllocator& a, const NodeAllocator& b) { return !(a == b); }

    NodePool* pool;
};
