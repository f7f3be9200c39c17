#include "ut_hash.h"

#include <boost/container/static_vector.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstdint>

namespace {

/// An entry with its hash: growing asks no hook, and most keys that differ are told apart without.
struct Slot {
    void* entry;
    std::uint32_t hash;
};

/// As it does not claim to be a good hash, the container mixes what it returns.
struct Hash {
    std::size_t operator()(const Slot& slot) const { return slot.hash; }
};

struct Equal {
    UT_HASH* table;
    bool operator()(const Slot& key, const Slot& slot) const
    {
        return key.hash == slot.hash && table->comp_func(key.entry, slot.entry) == 0;
    }
};

} // namespace

/// The first few entries stand in the table itself; beyond them all are in a flat hash set.
class UT_HASH::STATE {
public:
    static constexpr std::size_t few_capacity = 16;

    explicit STATE(UT_HASH* owner) : table(owner), many(0, Hash{}, Equal{owner}) {}

    [[nodiscard]] Slot slot_of(const void* key) const
    {
        return {const_cast<void*>(key), table->hash_func(key)};
    }

    [[nodiscard]] const Slot* find(const Slot& key) const
    {
        if (many.empty()) {
            const auto equal = [&](const Slot& slot) { return Equal{table}(key, slot); };
            const auto found = std::find_if(few.begin(), few.end(), equal);
            return found == few.end() ? nullptr : &*found;
        }
        const auto found = many.find(key);
        return found == many.end() ? nullptr : &*found;
    }

    void add(const Slot& slot)
    {
        if (many.empty() && few.size() < few_capacity) {
            few.push_back(slot);
            return;
        }
        if (!few.empty()) {
            many.reserve(2 * few_capacity); // all that can fail comes first
            many.insert(few.begin(), few.end());
            few.clear();
        }
        many.insert(slot);
    }

    void remove(const Slot& slot)
    {
        if (many.empty()) {
            few.erase(few.begin() + (&slot - few.data()));
        } else {
            many.erase(slot);
        }
    }

    /// Empties the table and then visits what was in it, so that a hook finds no freed entry.
    template <typename Visit>
    void drain(const Visit& visit)
    {
        Slots taken(0, Hash{}, Equal{table});
        taken.swap(many);
        const Few taken_few = few;
        few.clear();
        std::for_each(taken_few.begin(), taken_few.end(), visit);
        std::for_each(taken.begin(), taken.end(), visit);
    }

private:
    using Few = boost::container::static_vector<Slot, few_capacity>;
    using Slots = boost::unordered_flat_set<Slot, Hash, Equal>;

    UT_HASH* table;
    Few few;
    Slots many; ///< empty as long as the few places suffice
};

UT_HASH::UT_HASH(unsigned int /*size*/, unsigned char keep_flag)
    : state(new STATE(this)), flag(keep_flag)
{
}

UT_HASH::~UT_HASH() { delete state; }

void* UT_HASH::s_add(const void* key, void* /*data*/)
{
    const Slot slot = state->slot_of(key);
    if (const Slot* found = state->find(slot)) {
        return found->entry;
    }
    state->add(slot);
    return slot.entry;
}

void* UT_HASH::s_find(const void* key)
{
    const Slot* found = state->find(state->slot_of(key));
    return found == nullptr ? nullptr : found->entry;
}

void* UT_HASH::s_remove(const void* key)
{
    const Slot* found = state->find(state->slot_of(key));
    if (found == nullptr) {
        return nullptr;
    }
    void* entry = found->entry;
    state->remove(*found);
    return entry;
}

void UT_HASH::process_and_kill(unsigned char kill, void (*each)(void*))
{
    state->drain([&](const Slot& slot) {
        if (each != nullptr) {
            each(slot.entry);
        }
        if (kill != 0) {
            del_func(slot.entry);
        }
    });
}
