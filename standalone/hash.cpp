#include "ut_hash.h"

#include <boost/container/static_vector.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <cstdint>

namespace {

/// An entry with its hash: growing asks no hook, and most keys that differ are told apart without.
struct hashed_entry {
    void* entry;
    std::uint32_t hash;
};

/// As it does not claim to be a good hash, the container mixes what it returns.
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

/// The first few entries stand in the table itself; beyond them all are in a flat hash set.
class UT_HASH::STATE {
public:
    static constexpr std::size_t few_capacity = 16;

    explicit STATE(UT_HASH* owner) : table(owner), many(0, kept_hash{}, equality{owner}) {}

    [[nodiscard]] hashed_entry slot_of(const void* key) const
    {
        return {const_cast<void*>(key), table->hash_func(key)};
    }

    [[nodiscard]] const hashed_entry* find(const hashed_entry& key) const
    {
        if (many.empty()) {
            const auto equal = [&](const hashed_entry& slot) { return equality{table}(key, slot); };
            const auto found = std::find_if(few.begin(), few.end(), equal);
            return found == few.end() ? nullptr : &*found;
        }
        const auto found = many.find(key);
        return found == many.end() ? nullptr : &*found;
    }

    void add(const hashed_entry& slot)
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

    void remove(const hashed_entry& slot)
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
        flat_set taken(0, kept_hash{}, equality{table});
        taken.swap(many);
        const few_places taken_few = few;
        few.clear();
        std::for_each(taken_few.begin(), taken_few.end(), visit);
        std::for_each(taken.begin(), taken.end(), visit);
    }

private:
    using few_places = boost::container::static_vector<hashed_entry, few_capacity>;
    using flat_set = boost::unordered_flat_set<hashed_entry, kept_hash, equality>;

    UT_HASH* table;
    few_places few;
    flat_set many; ///< empty as long as the few places suffice
};

UT_HASH::UT_HASH(unsigned int /*size*/, unsigned char keep_flag)
    : state(new STATE(this)), flag(keep_flag)
{
}

UT_HASH::~UT_HASH() { delete state; }

void* UT_HASH::s_add(const void* key, void* /*data*/)
{
    const hashed_entry slot = state->slot_of(key);
    if (const hashed_entry* found = state->find(slot)) {
        return found->entry;
    }
    state->add(slot);
    return slot.entry;
}

void* UT_HASH::s_find(const void* key)
{
    const hashed_entry* found = state->find(state->slot_of(key));
    return found == nullptr ? nullptr : found->entry;
}

void* UT_HASH::s_remove(const void* key)
{
    const hashed_entry* found = state->find(state->slot_of(key));
    if (found == nullptr) {
        return nullptr;
    }
    void* entry = found->entry;
    state->remove(*found);
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
