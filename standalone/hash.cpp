#include "ut_hash.h"

#include <absl/container/flat_hash_set.h>

#include <cstdint>

namespace {

/// The hook's hash is weak in its low bits and 32 bits wide; a multiplication spreads it.
std::size_t mixed(unsigned int hash) { return std::uint64_t{hash} * 0x9E3779B97F4A7C15U; }

} // namespace

/// A flat hash set of the entries.
class UT_HASH::STATE {
public:
    struct Hash {
        using is_transparent = void;
        UT_HASH* table;
        std::size_t operator()(const void* key) const { return mixed(table->hash_func(key)); }
    };
    struct Equal {
        using is_transparent = void;
        UT_HASH* table;
        bool operator()(const void* a, const void* b) const
        {
            return table->comp_func(a, const_cast<void*>(b)) == 0;
        }
    };
    explicit STATE(UT_HASH* table) : entries(0, Hash{table}, Equal{table}) {}
    absl::flat_hash_set<void*, Hash, Equal> entries;
};

UT_HASH::UT_HASH(unsigned int /*size*/, unsigned char keep_flag)
    : state(new STATE(this)), flag(keep_flag)
{
}

UT_HASH::~UT_HASH() { delete state; }

void* UT_HASH::s_add(const void* key, void* /*data*/)
{
    return *state->entries.insert(const_cast<void*>(key)).first;
}

void* UT_HASH::s_find(const void* key)
{
    const auto found = state->entries.find(key);
    return found == state->entries.end() ? nullptr : *found;
}

void* UT_HASH::s_remove(const void* key)
{
    const auto found = state->entries.find(key);
    if (found == state->entries.end()) {
        return nullptr;
    }
    void* entry = *found;
    state->entries.erase(found);
    return entry;
}

void UT_HASH::process_and_kill(unsigned char kill, void (*each)(void*))
{
    for (void* entry : state->entries) {
        if (each != nullptr) {
            each(entry);
        }
        if (kill != 0) {
            del_func(entry);
        }
    }
    state->entries.clear();
}
