/// @file
/// @brief An allocator for containers that allocate one node at a time.
#pragma once

#include <boost/pool/pool.hpp>

#include <cstddef>
#include <new>
#include <optional>

/// The pool behind a container's allocator, made when the container tells the size of its nodes.
using node_pool = std::optional<boost::pool<>>;

template <typename element>
class node_allocator {
public:
    using value_type = element;

    explicit node_allocator(node_pool& source) : pool(&source) {}
    template <typename other_element>
    // Not explicit: containers convert their allocators.
    node_allocator(const node_allocator<other_element>& other) : pool(other.pool)
    {
    }

    element* allocate(std::size_t /*count: 1*/)
    {
        // Few at first for the sake of small containers, and never many that stay unused.
        constexpr std::size_t first_nodes = 32;
        constexpr std::size_t most_nodes = 1024;
        if (!pool->has_value()) {
            pool->emplace(sizeof(element), first_nodes, most_nodes);
        }
        void* const node = (*pool)->malloc();
        if (node == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<element*>(node);
    }
    void deallocate(element* node, std::size_t /*count: 1*/) { (*pool)->free(node); }

    friend bool operator==(const node_allocator& a, const node_allocator& b)
    {
        return a.pool == b.pool;
    }
    friend bool operator!=(const node_allocator& a, const node_allocator& b) { return !(a == b); }

    node_pool* pool;
};
