#include "ut_hash.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

/// @brief Eight places, searched at once.
///
/// Byte i of `tags` is 0 when place i was never taken, else some bits of the hash and the mark of a
/// taken place. Most keys that differ are thus told apart without a look at an entry, and growing
/// asks no hook for the hashes.
struct group {
    static constexpr unsigned size = 8;
    static constexpr std::uint64_t ones = 0x0101010101010101U;
    static constexpr std::uint64_t taken_marks = 0x80 * ones;

    std::uint64_t tags;
    std::uint32_t hashes[size];
    void* entries[size]; ///< null where the entry was removed

    group() : tags(0) {} // NOLINT: what is at a free place is never read

    static std::uint64_t tag_of(std::uint64_t mixed) { return (mixed >> 16 & 0x7F) | 0x80; }
    /// A mark in each byte that is `tag`, and in some that are not.
    std::uint64_t candidates(std::uint64_t tag) const
    {
        const std::uint64_t differences = tags ^ (tag * ones);
        return (differences - ones) & ~differences & taken_marks;
    }
    /// A mark in each byte of a free place.
    std::uint64_t free_places() const { return ~tags & taken_marks; }
    /// The place of the first mark.
    static unsigned first(std::uint64_t marks)
    {
        return static_cast<unsigned>(__builtin_ctzll(marks)) / 8;
    }
};

} // namespace

/// @brief A flat hash set that starts small, for most tables stay so.
///
/// It asks for the hash of a key once and compares few keys: both are calls of hooks.
class UT_HASH::STATE {
public:
    explicit STATE(UT_HASH* owner) : table(owner), groups(first_groups) {}

    void* find(const void* key)
    {
        const auto [place, index, is_found] = search(key, table->hash_func(key));
        return is_found ? place->entries[index] : nullptr;
    }

    /// The entry equal to `key` that the table holds afterwards.
    void* add(void* key)
    {
        const std::uint32_t hash = table->hash_func(key);
        const auto [place, index, is_found] = search(key, hash);
        if (is_found) {
            return place->entries[index];
        }
        if (4 * (taken + 1) > 3 * groups.size() * group::size) {
            grow();
            insert(key, hash);
        } else {
            put(*place, index, key, hash);
        }
        return key;
    }

    void* remove(const void* key)
    {
        const auto [place, index, is_found] = search(key, table->hash_func(key));
        if (!is_found) {
            return nullptr;
        }
        ++removed;
        return std::exchange(place->entries[index], nullptr);
    }

    /// Empties the table, each entry before it is visited, so that a hook finds no freed entry.
    template <typename Visit>
    void drain(const Visit& visit)
    {
        for_each(groups, [&](void*& entry, std::uint32_t /*hash*/) {
            visit(std::exchange(entry, nullptr));
        });
        groups.resize(first_groups);
        std::fill(groups.begin(), groups.end(), group());
        shift = first_shift;
        taken = 0;
        removed = 0;
    }

private:
    static constexpr std::size_t first_groups = 4;
    static constexpr unsigned first_shift = 64 - 2;

    struct position {
        group* place;
        unsigned index;
        bool is_found;
    };

    /// The uppermost bits choose the group, some in the middle are the tag.
    static std::uint64_t mix(std::uint32_t hash) { return hash * 0x9E3779B97F4A7C15U; }
    group& next(group& place) { return &place == &groups.back() ? groups.front() : *(&place + 1); }

    /// Where the entry equal to `key` is, or else the first free place for it.
    position search(const void* key, std::uint32_t hash)
    {
        const std::uint64_t mixed = mix(hash);
        for (group* g = &groups[mixed >> shift];; g = &next(*g)) {
            for (auto marks = g->candidates(group::tag_of(mixed)); marks != 0; marks &= marks - 1) {
                const unsigned i = group::first(marks);
                if (g->hashes[i] == hash && g->entries[i] != nullptr &&
                    table->comp_func(key, g->entries[i]) == 0) {
                    return {g, i, true};
                }
            }
            if (const auto marks = g->free_places()) {
                return {g, group::first(marks), false};
            }
        }
    }

    void put(group& place, unsigned index, void* entry, std::uint32_t hash)
    {
        place.tags |= group::tag_of(mix(hash)) << (8 * index);
        place.hashes[index] = hash;
        place.entries[index] = entry;
        ++taken;
    }

    /// Adds an entry to which none is equal.
    void insert(void* entry, std::uint32_t hash)
    {
        group* g = &groups[mix(hash) >> shift];
        while (g->free_places() == 0) {
            g = &next(*g);
        }
        put(*g, group::first(g->free_places()), entry, hash);
    }

    template <typename Visit>
    static void for_each(std::vector<group>& all, const Visit& visit)
    {
        for (group& g : all) {
            for (auto marks = g.tags & group::taken_marks; marks != 0; marks &= marks - 1) {
                const unsigned i = group::first(marks);
                if (g.entries[i] != nullptr) {
                    visit(g.entries[i], g.hashes[i]);
                }
            }
        }
    }

    /// Makes room, in a table of the same size when removed entries take most of it.
    void grow()
    {
        const bool is_crowded = 2 * removed < taken;
        std::vector<group> old((is_crowded ? 2 : 1) * groups.size());
        old.swap(groups);
        shift -= is_crowded ? 1 : 0;
        taken = 0;
        removed = 0;
        for_each(old, [&](void* entry, std::uint32_t hash) { insert(entry, hash); });
    }

    UT_HASH* table;
    std::vector<group> groups;
    unsigned shift = first_shift;
    std::size_t taken = 0; ///< places, those of removed entries included
    std::size_t removed = 0;
};

UT_HASH::UT_HASH(unsigned int /*size*/, unsigned char keep_flag)
    : state(new STATE(this)), flag(keep_flag)
{
}

UT_HASH::~UT_HASH() { delete state; }

void* UT_HASH::s_add(const void* key, void* /*data*/) { return state->add(const_cast<void*>(key)); }

void* UT_HASH::s_find(const void* key) { return state->find(key); }

void* UT_HASH::s_remove(const void* key) { return state->remove(key); }

void UT_HASH::process_and_kill(unsigned char kill, void (*each)(void*))
{
    state->drain([&](void* entry) {
        if (each != nullptr) {
            each(entry);
        }
        if (kill != 0) {
            del_func(entry);
        }
    });
}
