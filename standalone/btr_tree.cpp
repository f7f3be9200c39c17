#include "ut_btr_tree.h"

#include "node_allocator.h"

#include <set>

namespace {

struct ordering {
    using is_transparent = void;
    UT_BTR_TREE* tree;
    bool operator()(const void* key, const void* entry) const
    {
        return tree->comp_func(const_cast<void*>(key), static_cast<const char*>(entry)) < 0;
    }
};

using entry_set = std::set<void*, ordering, node_allocator<void*>>;

} // namespace

/// A balanced tree of the entries, whose nodes come from a pool of its own.
class UT_BTR_TREE::STATE {
public:
    explicit STATE(UT_BTR_TREE* owner)
        : tree(owner), entries(ordering{owner}, node_allocator<void*>(pool)), gap(entries.end())
    {
    }

    /// The entry equal to `key`, or null; then `gap` is where it belongs.
    void* find(const void* key)
    {
        const auto place = entries.lower_bound(key);
        if (place != entries.end() &&
            tree->comp_func(const_cast<void*>(key), static_cast<const char*>(*place)) == 0) {
            return *place;
        }
        gap = place;
        return nullptr;
    }

    /// Mostly follows a search for an equal key, so `gap` is its place; three comparisons confirm
    /// that.
    void* add(void* key) { return *entries.insert(gap, key); }

    void* remove(const void* key)
    {
        const auto place = entries.find(key);
        if (place == entries.end()) {
            return nullptr;
        }
        void* entry = *place;
        gap = entries.erase(place);
        return entry;
    }

    /// Empties the tree before the hooks see what was in it, so that none finds a freed entry.
    template <typename visitor>
    void drain(const visitor& visit)
    {
        entry_set taken(ordering{tree}, node_allocator<void*>(pool));
        taken.swap(entries);
        gap = entries.end();
        for (void* entry : taken) {
            visit(entry);
        }
    }

private:
    UT_BTR_TREE* tree;
    node_pool pool;
    entry_set entries;
    entry_set::const_iterator gap;
};

UT_BTR_TREE::UT_BTR_TREE(unsigned char keep_flag) : state(new STATE(this)), flag(keep_flag) {}

UT_BTR_TREE::~UT_BTR_TREE() { delete state; }

void* UT_BTR_TREE::s_add(const void* key, void* /*data*/)
{
    return state->add(const_cast<void*>(key));
}

void* UT_BTR_TREE::s_find(const void* key) { return state->find(key); }

void* UT_BTR_TREE::s_remove(const void* key) { return state->remove(key); }

void UT_BTR_TREE::flush(void (*each)(void**, void*))
{
    state->drain([&](void* entry) {
        if (each != nullptr) {
            each(&entry, nullptr);
        }
        del_func(entry);
    });
}
