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
/// A search mostly fails. The tags, which lie apart from the entries, 16 to a cache line, tell so
/// without a look at an entry:
/// ```
///     tag     31 ............ 8   7 ........ 0
///             [ number of call ] [ of the hash ]      the place is free for every other call
/// ```
/// A memo of the same kind that another one makes useless, because the host calls the library from
/// within a report, loses entries and nothing else.
/// @tparam KEY  has `operator==` and `std::uint64_t hash() const`, whose upper bits are good
template <typename KEY>
class MEMO {
public:
    MEMO() : call_(next_call()), tags_(kept_tags), entries_(kept_entries) {}
    MEMO(const MEMO&) = delete;
    MEMO& operator=(const MEMO&) = delete;
    ~MEMO() = default;

    /// @brief The result of a subproblem, null if it is not known.
    BDD_NODE* find(const KEY& key) const
    {
        const std::uint64_t hash = key.hash();
        const std::uint32_t tag = tag_of(hash);
        for (std::size_t at = hash >> shift_; is_taken(at); at = next(at)) {
            if (tags_[at] == tag && entries_[at].key == key) {
                return entries_[at].result;
            }
        }
        return nullptr;
    }

    /// @brief Keeps the result of a subproblem that `find` did not know.
    void add(const KEY& key, BDD_NODE* result)
    {
        if (2 * ++used_ > mask_) {
            grow();
        }
        insert({key, result});
    }

private:
    struct ENTRY {
        KEY key;
        BDD_NODE* result;
    };

    static constexpr unsigned hash_bits_in_tag = 8;
    static constexpr std::uint32_t one_call = std::uint32_t{1} << hash_bits_in_tag;
    static constexpr unsigned first_bits = 8;
    static constexpr unsigned growth_bits = 2; ///< the next table has four times the entries
    static constexpr std::size_t first_size = std::size_t{1} << first_bits;
    /// The tables of 256, 1,024 and 4,096 entries stand side by side.
    static constexpr std::size_t kept_size = first_size * (1 + 4 + 16);
    inline static std::uint32_t kept_tags[kept_size];
    inline static ENTRY kept_entries[kept_size];
    inline static std::uint32_t last_call;

    /// The tag of the new call without the bits of a hash.
    static std::uint32_t next_call()
    {
        last_call += one_call;
        if (last_call == 0) {
            std::fill(std::begin(kept_tags), std::end(kept_tags), 0U);
            last_call = one_call;
        }
        return last_call;
    }

    /// The place comes from the uppermost bits.
    std::uint32_t tag_of(std::uint64_t hash) const
    {
        return call_ | (static_cast<std::uint32_t>(hash >> 24) & (one_call - 1));
    }
    bool is_taken(std::size_t at) const { return (tags_[at] ^ call_) < one_call; }
    std::size_t next(std::size_t at) const { return (at + 1) & mask_; }

    void insert(const ENTRY& entry)
    {
        const std::uint64_t hash = entry.key.hash();
        std::size_t at = hash >> shift_;
        while (is_taken(at)) {
            at = next(at);
        }
        tags_[at] = tag_of(hash);
        entries_[at] = entry;
    }

    [[gnu::noinline]] void grow()
    {
        const std::uint32_t* const old_tags = tags_;
        const ENTRY* const old_entries = entries_;
        const std::size_t old_size = mask_ + 1;
        const std::size_t size = old_size << growth_bits;
        std::unique_ptr<std::uint32_t[]> more_tags;
        std::unique_ptr<ENTRY[]> more_entries;
        if (old_size < kept_size / 2) {
            tags_ += old_size;
            entries_ += old_size;
        } else {
            more_tags = std::make_unique<std::uint32_t[]>(size);
            more_entries.reset(new ENTRY[size]); // left uninitialised: a free place has no entry
            tags_ = more_tags.get();
            entries_ = more_entries.get();
        }
        mask_ = size - 1;
        shift_ -= growth_bits;
        for (std::size_t i = 0; i < old_size; ++i) {
            if ((old_tags[i] ^ call_) < one_call) {
                insert(old_entries[i]);
            }
        }
        heap_tags_ = std::move(more_tags);
        heap_entries_ = std::move(more_entries);
    }

    const std::uint32_t call_;
    std::uint32_t* tags_;
    ENTRY* entries_;
    std::size_t mask_ = first_size - 1;
    unsigned shift_ = 64 - first_bits;
    std::size_t used_ = 0;
    std::unique_ptr<std::uint32_t[]> heap_tags_;
    std::unique_ptr<ENTRY[]> heap_entries_;
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
