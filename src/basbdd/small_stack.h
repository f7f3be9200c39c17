/// @file
/// @brief The explicit stack of the walks, which takes the place of recursion.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace basbdd {

/// @brief A stack of small records whose first ones live in the object itself.
///
/// A walk over a small cell thus allocates nothing, and one over 60,000 levels takes its frames
/// from the heap.
template <typename record, std::size_t own_count = 32>
class small_stack {
    static_assert(std::is_trivially_copyable_v<record>);

public:
    // The first frames are left uninitialised on purpose.
    small_stack() : base(own), end(own), limit(own + own_count) {} // NOLINT
    small_stack(const small_stack&) = delete;
    small_stack& operator=(const small_stack&) = delete;
    ~small_stack() = default;

    bool empty() const { return end == base; }
    record& top() { return end[-1]; }
    void pop() { --end; }
    void clear() { end = base; }

    void push(const record& each)
    {
        if (end == limit) {
            grow();
        }
        *end++ = each;
    }

private:
    void grow()
    {
        const auto count = static_cast<std::size_t>(limit - base);
        std::unique_ptr<record[]> larger(new record[2 * count]);
        std::copy(base, limit, larger.get());
        on_heap = std::move(larger);
        base = on_heap.get();
        end = base + count;
        limit = base + 2 * count;
    }

    record* base;
    record* end;
    record* limit;
    std::unique_ptr<record[]> on_heap;
    record own[own_count];
};

} // namespace basbdd
