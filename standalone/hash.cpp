#include "ut_hash.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstdint>

namespace {

/// An entry with its hash: growing asks no hook, and most keys that differ are told apart without.
struct hashed_entry {
    void* entry;
    std::uint32_t hash;
};

/// Without `is_avalanching`, so the container mixes the result.
struct kept_hash {
    std::size_t operator()(const hashed_entry& slot) const { return slot.hash; }
};

struct equality {
    UT_HASH* table;
    bool operator()(const hashed_entry& key, const hashed_entry& slot) const
    {
        return key.hash == slot.hash && table->comp_func(key.entry, slot.entry) == 0;
    }
};

} // namespace

class UT_HASH::STATE {
public:
    using flat_set = boost::unordered_flat_set<hashed_entry, kept_hash, equality>;

    /// Growing from nothing costs a small manager a twentieth of its time.
    explicit STATE(UT_HASH* owner)
        : table(owner), entries(nodes_of_most_cells, kept_hash{}, equality{owner})
    {
    }

    [[nodiscard]] hashed_entry slot_of(const void* key) const
    {
        return {const_cast<void*>(key), table->hash_func(key)};
    }

    /// Empties the table and then visits what was in it, so that a hook finds no freed entry.
    template <typename visitor>
    void drain(const visitor& visit)
    {
        flat_set taken(0, kept_hash{}, equality{table});
        taken.swap(entries);
        std::for_each(taken.begin(), taken.end(), visit);
    }

    static constexpr std::size_t nodes_of_most_cells = 50;

    UT_HASH* table;
    flat_set entries;
};

UT_HASH::UT_HASH(unsigned int /*size*/, unsigned char keep_flag)
    : state(new STATE(this)), flag(keep_flag)
{
}

UT_HASH::~UT_HASH() { delete state; }

void* UT_HASH::s_add(const void* key, void* /*data*/)
{
    return state->entries.insert(state->slot_of(key)).first->entry;
}

void* UT_HASH::s_find(const void* key)
{
    const auto found = state->entries.find(state->slot_of(key));
    return found == state->entries.end() ? nullptr : found->entry;
}

void* UT_HASH::s_remove(const void* key)
{
    const auto found = state->entries.find(state->slot_of(key));
    if (found == state->entries.end()) {
        return nullptr;
    }
    void* const entry = found->entry;
    state->entries.erase(found);
    return entry;
}

void UT_HASH::process_and_kill(unsigned char kill, void (*each)(void*))
{
    state->drain([&](const hashed_entry& slot) {
        if (each != nullptr) {
            each(slot.entry);
        }
        if (kill != 0) {
            del_func(slot.entry);
        }
    });
}
