/// @file
/// @brief The memo of one call: what the call has solved, so that it solves nothing twice.
///
/// The manager keeps no results between calls: it has no computed table. Within one call each of
/// `ifthenelse`, `compose`, `treetobdd` and `adduniqueidx` keeps a memo, which is empty at the
/// start and gone at the end. All if-then-else steps of one `compose` share one.
///
/// The memo changes no result. Nodes are canonical and never freed, so solving a subproblem once
/// more would find the same nodes in the unique table and make no new one: a hit skips only work
/// that has no effect, and the nodes, their order of creation and the edges are the same with the
/// memo and without it.
///
/// Small cells pay next to nothing for it. The first entries lie in a buffer of the unit, which is
/// never cleared: an entry counts only for the call whose number it bears. A call that needs more
/// takes them from the heap and gives them back at its end.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>

class BDD_NODE;

/// @brief An exact map from subproblems to edges, by open addressing with linear probing.
///
/// A memo of the same kind that another one makes useless, because the host calls the library from
/// within a report, loses entries and nothing else.
/// @tparam KEY  has `operator==` and `std::uint64_t hash() const`, whose upper bits are good
template <typename KEY>
class MEMO {
public:
    MEMO() : call_(next_call()), entries_(kept), mask_(first_size - 1), shift_(64 - first_bits) {}
    MEMO(const MEMO&) = delete;
    MEMO& operator=(const MEMO&) = delete;
    ~MEMO() = default;

    /// @brief The result of a subproblem, null if it is not known.
    BDD_NODE* find(const KEY& key)
    {
        const ENTRY& entry = slot_of(key);
        return entry.call == call_ ? entry.result : nullptr;
    }

    /// @brief Keeps the result of a subproblem that `find` did not know.
    void add(const KEY& key, BDD_NODE* result)
    {
        if (2 * ++used_ > mask_) {
            grow();
        }
        slot_of(key) = ENTRY{key, result, call_};
    }

private:
    struct ENTRY {
        KEY key;
        BDD_NODE* result;
        std::uint32_t call; ///< the entry is free for every other call
    };

    static constexpr unsigned first_bits = 8;
    static constexpr unsigned growth_bits = 2; ///< the next table has four times the entries
    static constexpr std::size_t first_size = std::size_t{1} << first_bits;
    /// The tables of 256, 1,024 and 4,096 entries stand side by side.
    static constexpr std::size_t kept_size = first_size * (1 + 4 + 16);
    inline static ENTRY kept[kept_size];
    inline static std::uint32_t last_call;

    static std::uint32_t next_call()
    {
        if (++last_call == 0) {
            std::fill(std::begin(kept), std::end(kept), ENTRY{});
            last_call = 1;
        }
        return last_call;
    }

    /// The entry of `key`, or the free one where it belongs.
    ENTRY& slot_of(const KEY& key)
    {
        std::size_t at = key.hash() >> shift_;
        while (entries_[at].call == call_ && !(entries_[at].key == key)) {
            at = (at + 1) & mask_;
        }
        return entries_[at];
    }

    [[gnu::noinline]] void grow()
    {
        const ENTRY* const old = entries_;
        const std::size_t old_size = mask_ + 1;
        const std::size_t size = old_size << growth_bits;
        const auto old_heap = std::move(heap_);
        if (old + old_size + size <= kept + kept_size && old >= kept) {
            entries_ += old_size;
        } else {
            heap_ = std::make_unique<ENTRY[]>(size);
            entries_ = heap_.get();
        }
        mask_ = size - 1;
        shift_ -= growth_bits;
        std::for_each(old, old + old_size, [this](const ENTRY& entry) {
            if (entry.call == call_) {
                slot_of(entry.key) = entry;
            }
        });
    }

    const std::uint32_t call_;
    ENTRY* entries_;
    std::size_t mask_;
    unsigned shift_;
    std::size_t used_ = 0;
    std::unique_ptr<ENTRY[]> heap_;
};

/// @brief The key of a memo about nodes of one kind.
template <typename NODE>
struct NODE_KEY {
    const NODE* node;

    bool operator==(const NODE_KEY& other) const { return node == other.node; }
    std::uint64_t hash() const
    {
        return reinterpret_cast<std::uintptr_t>(node) * 0x9E3779B97F4A7C15U;
    }
};
