/// @file
/// @brief The explicit stack of the walks, which takes the place of recursion.
#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

namespace basbdd {

/// @brief A stack of small records whose first ones live in the object itself.
///
/// A walk over a small cell thus allocates nothing, and one over 60,000 levels takes its frames
/// from the heap, in blocks that never move.
template <typename record, std::size_t own_count = 32>
class small_stack {
    static_assert(std::is_trivially_copyable_v<record>);

public:
    // The first records are not initialised, for a short walk uses few of them.
    small_stack() : base(own), end(own), limit(own + own_count) {} // NOLINT
    small_stack(const small_stack&) = delete;
    small_stack& operator=(const small_stack&) = delete;
    ~small_stack() = default;

    bool empty() const { return end == own; }
    record& top() { return end[-1]; }
    void clear()
    {
        if (!empty()) {
            enter(0);
            end = own;
        }
    }

    void push(const record& each)
    {
        if (end == limit) {
            enter(blocks_in_use + 1);
            end = base;
        }
        *end++ = each;
    }

    void pop()
    {
        if (--end == base && blocks_in_use != 0) {
            enter(blocks_in_use - 1);
            end = limit;
        }
    }

private:
    // NOLINTNEXTLINE(bugprone-sizeof-expression): a record may be a pointer
    static constexpr std::size_t block_size = 8192 / sizeof(record);

    /// Goes to the records that have the top: the own ones are number 0, others in a block.
    [[gnu::noinline]] void enter(std::size_t number)
    {
        if (number > blocks.size()) {
            blocks.push_back(std::unique_ptr<record[]>(new record[block_size]));
        }
        blocks_in_use = number;
        base = number == 0 ? own : blocks[number - 1].get();
        limit = base + (number == 0 ? own_count : block_size);
    }

    record* base;
    record* end;
    record* limit;
    std::size_t blocks_in_use = 0;
    std::vector<std::unique_ptr<record[]>> blocks;
    record own[own_count];
};

} // namespace basbdd
