#include "ut_hash.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

/// @brief Open addressing with linear probing, at most three quarters full.
///
/// The hashes lie apart from the entries, 16 to a cache line: most keys that differ are told apart
/// without a look at the entry, and growing asks no hook. A place takes 12 bytes. The first places
/// are in the object, so a small table takes nothing more from the heap.
class UT_HASH::STATE {
public:
    explicit STATE(UT_HASH* owner) : table(owner) {}
    STATE(const STATE&) = delete;
    STATE& operator=(const STATE&) = delete;
    ~STATE() = default;

    void* find(const void* key)
    {
        const std::uint32_t hash = hash_of(key);
        missed_hash = hash;
        std::size_t at = home(hash);
        for (; hashes[at] != 0; at = next(at)) {
            if (hashes[at] == hash) {
                missed_hash = 0;
                if (table->comp_func(key, entries[at]) == 0) {
                    return entries[at];
                }
            }
        }
        missed_at = at;
        return nullptr;
    }

    /// An addition mostly follows a search for an equal key, which has found the free place.
    void* add(void* key)
    {
        const std::uint32_t hash = hash_of(key);
        std::size_t at = hash == missed_hash ? missed_at : place_of(key, hash);
        if (hashes[at] != 0) {
            return entries[at];
        }
        if (4 * (count + 1) > 3 * size()) {
            grow();
            at = free_place(hash);
        }
        missed_hash = 0;
        hashes[at] = hash;
        entries[at] = key;
        ++count;
        return key;
    }

    void* remove(const void* key)
    {
        std::size_t hole = place_of(key, hash_of(key));
        if (hashes[hole] == 0) {
            return nullptr;
        }
        void* const entry = entries[hole];
        // Whatever stands behind the hole and may stand in it moves up.
        for (std::size_t at = next(hole); hashes[at] != 0; at = next(at)) {
            if (((at - home(hashes[at])) & mask) >= ((at - hole) & mask)) {
                hashes[hole] = hashes[at];
                entries[hole] = entries[at];
                hole = at;
            }
        }
        hashes[hole] = 0;
        missed_hash = 0;
        --count;
        return entry;
    }

    /// Empties the table and then visits what was in it, so that a hook finds no freed entry.
    template <typename Visit>
    void drain(const Visit& visit)
    {
        STATE taken(table);
        taken.take(*this);
        for (std::size_t at = 0; at < taken.size(); ++at) {
            if (taken.hashes[at] != 0) {
                visit(taken.entries[at]);
            }
        }
    }

private:
    static constexpr unsigned first_bits = 5;
    static constexpr std::size_t first_size = std::size_t{1} << first_bits;

    /// The hook's hash, spread over all bits; 0 is kept for free places.
    std::uint32_t hash_of(const void* key) const
    {
        const std::uint32_t spread = table->hash_func(key) * 0x9E3779B1U;
        return (spread ^ spread >> 15) * 0x85EBCA77U | 1U;
    }

    std::size_t size() const { return mask + 1; }
    std::size_t home(std::uint32_t hash) const { return hash >> shift; }
    std::size_t next(std::size_t at) const { return (at + 1) & mask; }

    /// Where the entry equal to `key` stands, or the free place where it belongs.
    std::size_t place_of(const void* key, std::uint32_t hash) const
    {
        std::size_t at = home(hash);
        while (hashes[at] != 0 && (hashes[at] != hash || table->comp_func(key, entries[at]) != 0)) {
            at = next(at);
        }
        return at;
    }

    std::size_t free_place(std::uint32_t hash) const
    {
        std::size_t at = home(hash);
        while (hashes[at] != 0) {
            at = next(at);
        }
        return at;
    }

    void grow()
    {
        std::unique_ptr<std::uint32_t[]> more_hashes(new std::uint32_t[2 * size()]());
        std::unique_ptr<void*[]> more_entries(new void*[2 * size()]);
        const std::uint32_t* const old_hashes = hashes;
        void* const* const old_entries = entries;
        const std::size_t old_size = size();
        hashes = more_hashes.get();
        entries = more_entries.get();
        mask = 2 * old_size - 1;
        --shift;
        for (std::size_t i = 0; i < old_size; ++i) {
            if (old_hashes[i] != 0) {
                const std::size_t at = free_place(old_hashes[i]);
                hashes[at] = old_hashes[i];
                entries[at] = old_entries[i];
            }
        }
        heap_hashes = std::move(more_hashes);
        heap_entries = std::move(more_entries);
    }

    /// Takes all entries of `other`, which becomes as new. This one is new.
    void take(STATE& other)
    {
        if (other.heap_hashes == nullptr) {
            std::copy_n(other.first_hashes, first_size, first_hashes);
            std::copy_n(other.first_entries, first_size, first_entries);
        } else {
            heap_hashes = std::move(other.heap_hashes);
            heap_entries = std::move(other.heap_entries);
            hashes = heap_hashes.get();
            entries = heap_entries.get();
            mask = std::exchange(other.mask, first_size - 1);
            shift = std::exchange(other.shift, 32 - first_bits);
            other.hashes = other.first_hashes;
            other.entries = other.first_entries;
        }
        std::fill_n(other.first_hashes, first_size, 0U);
        other.count = 0;
        other.missed_hash = 0;
    }

    UT_HASH* table;
    std::size_t count = 0;
    std::size_t mask = first_size - 1;
    unsigned shift = 32 - first_bits;
    std::uint32_t missed_hash = 0;        ///< of the last key sought, if no entry has it; else 0
    std::size_t missed_at = 0;            ///< the free place where that key belongs
    std::uint32_t* hashes = first_hashes; ///< 0: the place is free
    void** entries = first_entries;
    std::unique_ptr<std::uint32_t[]> heap_hashes;
    std::unique_ptr<void*[]> heap_entries;
    std::uint32_t first_hashes[first_size] = {};
    void* first_entries[first_size] = {};
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
