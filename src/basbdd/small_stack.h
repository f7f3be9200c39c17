/// @file
/// @brief The explicit stack of the walks, which takes the place of recursion.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

/// @brief A stack of small records whose first ones live in the object itself.
///
/// A walk over a small cell thus allocates nothing, and one over 60,000 levels takes its frames
/// from the heap.
template <typename FRAME, std::size_t INLINE_FRAMES = 32>
class SMALL_STACK {
    static_assert(std::is_trivially_copyable_v<FRAME>);

public:
    // The first frames are left uninitialised on purpose.
    SMALL_STACK() : base_(inline_), top_(inline_), limit_(inline_ + INLINE_FRAMES) {} // NOLINT
    SMALL_STACK(const SMALL_STACK&) = delete;
    SMALL_STACK& operator=(const SMALL_STACK&) = delete;
    ~SMALL_STACK() = default;

    bool empty() const { return top_ == base_; }
    FRAME& top() { return top_[-1]; }
    void pop() { --top_; }
    void clear() { top_ = base_; }

    void push(const FRAME& frame)
    {
        if (top_ == limit_) {
            grow();
        }
        *top_++ = frame;
    }

private:
    void grow()
    {
        const auto count = static_cast<std::size_t>(limit_ - base_);
        std::unique_ptr<FRAME[]> larger(new FRAME[2 * count]);
        std::copy(base_, limit_, larger.get());
        heap_ = std::move(larger);
        base_ = heap_.get();
        top_ = base_ + count;
        limit_ = base_ + 2 * count;
    }

    FRAME* base_;
    FRAME* top_;
    FRAME* limit_;
    std::unique_ptr<FRAME[]> heap_;
    FRAME inline_[INLINE_FRAMES];
};
