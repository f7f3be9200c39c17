/// @file
/// @brief The memo of one call: what the call has solved, so as not to solve it again.
///
/// The manager keeps no results between calls: it has no computed table. Within one call each of
/// `ifthenelse`, `compose`, `treetobdd` and `adduniqueidx` keeps a memo, which is empty at the
/// start and gone at the end. All if-then-else steps of one call share one.
///
/// The memo changes no result. Nodes are canonical and never freed, so solving a subproblem once
/// more would find the same nodes in the unique table and make no new one: a hit skips only work
/// that has no effect, and the nodes, their order of creation and the edges are the same with the
/// memo and without it. So a call can do without a part of its memo: where there is no memory for
/// more, the older half is forgotten.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

class BDD_NODE;

namespace basbdd {

/// What hashes multiply with: 2^64 over the golden ratio (Knuth, TAOCP 6.4).
constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15U;

/// @brief A map from subproblems to edges, exact as long as there is memory.
///
/// The entries stand in the order in which they came: the first ones in the object itself, so that
/// small cells allocate nothing, the others in blocks, which never move. They are found by an index
/// with linear probing, at most half full, whose slots mostly tell without a look at the entry that
/// its key is another one:
/// ```
///     slot     31 .................. n   n-1 ............ 0        0: free
///              [ of the key's hash ]     [ entry's number + 1 ]    the index has 2^n slots
/// ```
/// An entry of an if-then-else takes 32 bytes, and 8 to 32 bytes of the index.
/// @tparam problem  has `operator==` and `std::uint64_t hash() const`, whose upper bits are good
template <typename problem>
class memo {
public:
    // The tables are not initialised, for many calls keep nothing or little.
    memo() {} // NOLINT(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
    memo(const memo&) = delete;
    memo& operator=(const memo&) = delete;
    ~memo() = default;

    /// @brief The result of a subproblem, null if it is not known.
    BDD_NODE* find(const problem& key) const
    {
        const std::uint64_t hash = key.hash();
        const std::uint32_t tag = tag_of(hash);
        for (std::size_t at = hash >> shift; slot(at) != 0; at = next(at)) {
            const std::uint32_t number_if_equal = slot(at) ^ tag;
            if (number_if_equal <= mask) {
                const entry& candidate = entry_at(number_if_equal - 1);
                if (candidate.key == key) {
                    return candidate.result;
                }
            }
        }
        return nullptr;
    }

    /// @brief Keeps the result of a subproblem that `find` did not know.
    void add(const problem& key, BDD_NODE* result)
    {
        if (used == limit) {
            make_room_or_forget();
        }
        append(key, result);
    }

    /// @brief The same for a call that cannot do without: throws std::bad_alloc and forgets
    /// nothing.
    void add_for_good(const problem& key, BDD_NODE* result)
    {
        if (used == limit) {
            make_room();
        }
        append(key, result);
    }

    /// @brief Frees what the memo has on the heap, and forgets all but the newest.
    void give_back()
    {
        if (more == nullptr) {
            return;
        }
        forget(used - std::min(used, own_entry_count / 2));
        slots = own_slots;
        shift = 64 - own_bits;
        mask = own_slot_count - 1;
        more.reset();
        link_all();
    }

private:
    struct entry {
        problem key;
        BDD_NODE* result;
    };
    static_assert(std::is_trivially_copyable_v<entry>);

    /// What is on the heap.
    struct extension {
        std::vector<std::unique_ptr<entry[]>> blocks;
        std::vector<std::unique_ptr<std::uint32_t[]>> pages; ///< of the index
    };

    static constexpr unsigned own_bits = 8;
    static constexpr unsigned large_bits = 16; ///< below, an index grows fourfold, then twofold
    static constexpr unsigned page_bits = 22;  ///< larger indexes are in pages of 16 MiB
    static constexpr unsigned most_bits = 32;
    static constexpr std::size_t page_size = std::size_t{1} << page_bits;
    static constexpr std::size_t own_slot_count = std::size_t{1} << own_bits;
    static constexpr std::size_t own_entry_count = own_slot_count / 2;
    static constexpr std::size_t block_size = 8192 / sizeof(entry);
    /// Stands for the index until the first entry, so that a call that keeps nothing clears
    /// nothing. Nobody writes it, so all threads may have the same.
    inline static std::uint32_t no_slots[2];

    std::size_t slot_count() const { return mask + std::size_t{1}; }
    std::size_t next(std::size_t at) const { return (at + 1) & mask; }
    std::uint32_t tag_of(std::uint64_t hash) const
    {
        return static_cast<std::uint32_t>(hash) & ~mask;
    }

    const entry& entry_at(std::size_t number) const
    {
        if (number < own_entry_count) {
            return own_entries[number];
        }
        const std::size_t place = number - own_entry_count;
        return more->blocks[place / block_size][place % block_size];
    }
    entry& entry_at(std::size_t number)
    {
        return const_cast<entry&>(std::as_const(*this).entry_at(number));
    }

    /// Few indexes are so large that they have several pages.
    const std::uint32_t& slot(std::size_t at) const
    {
        return __builtin_expect(static_cast<long>(mask < page_size), 1) != 0 ? slots[at]
                                                                             : slot_in_pages(at);
    }
    std::uint32_t& slot(std::size_t at)
    {
        return const_cast<std::uint32_t&>(std::as_const(*this).slot(at));
    }

    [[gnu::noinline, gnu::pure]] const std::uint32_t& slot_in_pages(std::size_t at) const
    {
        return more->pages[at / page_size][at % page_size];
    }

    void append(const problem& key, BDD_NODE* result)
    {
        entry_at(used) = {key, result};
        link(used, key);
        ++used;
    }

    void link(std::size_t number, const problem& key)
    {
        const std::uint64_t hash = key.hash();
        std::size_t at = hash >> shift;
        while (slot(at) != 0) {
            at = next(at);
        }
        slot(at) = tag_of(hash) | static_cast<std::uint32_t>(number + 1);
    }

    /// Makes room for another entry. The older half goes when there is no memory for that: what
    /// open problems wait for is mostly new.
    [[gnu::noinline]] void make_room_or_forget()
    {
        try {
            make_room();
        } catch (const std::bad_alloc&) {
            forget(used / 2);
            link_all();
        }
    }

    /// Forgets the oldest entries; to link the others again is the caller's.
    void forget(std::size_t count)
    {
        used -= count;
        for (std::size_t number = 0; number < used; ++number) {
            entry_at(number) = entry_at(number + count);
        }
    }

    [[gnu::noinline]] void make_room()
    {
        if (used == slot_count() / 2) {
            widen_index();
        }
        if (used == room()) {
            extend().blocks.push_back(std::unique_ptr<entry[]>(new entry[block_size]));
            limit = std::min(room(), slot_count() / 2);
        }
    }

    std::size_t room() const
    {
        return own_entry_count + (more == nullptr ? 0 : more->blocks.size() * block_size);
    }

    void widen_index()
    {
        unsigned bits = own_bits;
        if (slots == no_slots) {
            slots = own_slots;
        } else {
            bits = 64 - shift;
            bits += bits < large_bits ? 2 : 1;
            add_pages(bits);
        }
        shift = 64 - bits;
        mask = static_cast<std::uint32_t>((std::uint64_t{1} << bits) - 1);
        link_all();
    }

    /// Gets memory for an index of 2^bits slots, to be linked anew; the old one stays if it throws.
    void add_pages(unsigned bits)
    {
        if (bits > most_bits) {
            throw std::bad_alloc();
        }
        auto& pages = extend().pages;
        if (bits <= page_bits) {
            std::unique_ptr<std::uint32_t[]> page(new std::uint32_t[std::size_t{1} << bits]);
            pages.clear();
            pages.push_back(std::move(page));
        } else {
            while (pages.size() < std::size_t{1} << (bits - page_bits)) {
                pages.push_back(std::unique_ptr<std::uint32_t[]>(new std::uint32_t[page_size]));
            }
        }
        slots = pages.front().get();
    }

    void link_all()
    {
        std::fill_n(slots, std::min(slot_count(), page_size), 0U);
        for (std::size_t page = 1; page < slot_count() / page_size; ++page) {
            std::fill_n(more->pages[page].get(), page_size, 0U);
        }
        for (std::size_t number = 0; number < used; ++number) {
            link(number, entry_at(number).key);
        }
        limit = std::min(room(), slot_count() / 2);
    }

    extension& extend()
    {
        if (more == nullptr) {
            more = std::make_unique<extension>();
        }
        return *more;
    }

    std::uint32_t* slots = no_slots;
    std::uint32_t mask = 0;
    unsigned shift = 63;
    std::size_t used = 0;
    std::size_t limit = 0; ///< entries before the next `make_room`
    std::unique_ptr<extension> more;
    std::uint32_t own_slots[own_slot_count];
    entry own_entries[own_entry_count];
};

/// @brief The key of a memo about nodes of one kind.
template <typename node_type>
struct node_key {
    const node_type* node;

    bool operator==(const node_key& other) const { return node == other.node; }
    std::uint64_t hash() const { return reinterpret_cast<std::uintptr_t>(node) * golden_ratio; }
};

} // namespace basbdd
