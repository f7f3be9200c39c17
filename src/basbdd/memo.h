/// @file
/// @brief The memo of one call: what the call has solved, so that it solves nothing twice.
///
/// The manager keeps no results between calls: it has no computed table. Within one call each of
/// `ifthenelse`, `compose`, `treetobdd` and `adduniqueidx` keeps a memo, which is empty at the
/// start and gone at the end. All if-then-else steps of one call share one.
///
/// The memo changes no result. Nodes are canonical and never freed, so solving a subproblem once
/// more would find the same nodes in the unique table and make no new one: a hit skips only work
/// that has no effect, and the nodes, their order of creation and the edges are the same with the
/// memo and without it. So the memo never fails either: where it finds no memory, it forgets.
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
    // The tables are left uninitialised on purpose.
    memo() {} // NOLINT(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
    memo(const memo&) = delete;
    memo& operator=(const memo&) = delete;
    ~memo() = default;

    /// @brief The result of a subproblem, null if it is not known.
    BDD_NODE* find(const problem& key) const
    {
        const std::uint64_t hash = key.hash();
        const std::uint32_t tag = tag_of(hash);
        for (std::size_t at = hash >> shift; slots[at] != 0; at = next(at)) {
            const std::uint32_t number_if_equal = slots[at] ^ tag;
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
            make_room();
        }
        entry_at(used) = {key, result};
        link(used, key);
        ++used;
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
        std::unique_ptr<std::uint32_t[]> slots;
    };

    static constexpr unsigned own_bits = 8;
    static constexpr unsigned growth_bits = 2; ///< the next index has four times the slots
    static constexpr unsigned most_bits = 32;
    static constexpr std::size_t own_slot_count = std::size_t{1} << own_bits;
    static constexpr std::size_t own_entry_count = own_slot_count / 2;
    static constexpr std::size_t block_size = 65536 / sizeof(entry);
    /// Stands for the index until the first entry; never written, so that a call that keeps nothing
    /// clears nothing.
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

    void link(std::size_t number, const problem& key)
    {
        const std::uint64_t hash = key.hash();
        std::size_t at = hash >> shift;
        while (slots[at] != 0) {
            at = next(at);
        }
        slots[at] = tag_of(hash) | static_cast<std::uint32_t>(number + 1);
    }

    /// Makes room for another entry. Without memory for that, all others go.
    [[gnu::noinline]] void make_room()
    {
        try {
            if (used == slot_count() / 2) {
                widen_index();
            }
            if (used == room()) {
                add_block();
            }
        } catch (const std::bad_alloc&) {
            used = 0;
            link_all();
        }
        limit = std::min(room(), slot_count() / 2);
    }

    std::size_t room() const
    {
        return own_entry_count + (more == nullptr ? 0 : more->blocks.size() * block_size);
    }

    void widen_index()
    {
        if (slots == no_slots) {
            slots = own_slots;
            shift = 64 - own_bits;
        } else {
            const unsigned bits = 64 - shift + growth_bits;
            if (bits > most_bits) {
                throw std::bad_alloc();
            }
            extend().slots.reset(new std::uint32_t[std::size_t{1} << bits]);
            slots = more->slots.get();
            shift = 64 - bits;
        }
        mask = static_cast<std::uint32_t>((std::uint64_t{1} << (64 - shift)) - 1);
        link_all();
    }

    void link_all()
    {
        std::fill_n(slots, slot_count(), 0U);
        for (std::size_t number = 0; number < used; ++number) {
            link(number, entry_at(number).key);
        }
    }

    void add_block() { extend().blocks.push_back(std::unique_ptr<entry[]>(new entry[block_size])); }

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
