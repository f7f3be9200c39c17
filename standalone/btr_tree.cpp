#include "ut_btr_tree.h"

#include <absl/container/btree_set.h>

/// A B-tree of the entries.
class UT_BTR_TREE::STATE {
public:
    struct Less {
        using is_transparent = void;
        UT_BTR_TREE* tree;
        bool operator()(const void* a, const void* b) const
        {
            return tree->comp_func(const_cast<void*>(a), static_cast<const char*>(b)) < 0;
        }
    };
    explicit STATE(UT_BTR_TREE* tree) : entries(Less{tree}) {}
    absl::btree_set<void*, Less> entries;
};

UT_BTR_TREE::UT_BTR_TREE(unsigned char keep_flag) : state(new STATE(this)), flag(keep_flag) {}

UT_BTR_TREE::~UT_BTR_TREE() { delete state; }

void* UT_BTR_TREE::s_add(const void* key, void* /*data*/)
{
    return *state->entries.insert(const_cast<void*>(key)).first;
}

void* UT_BTR_TREE::s_find(const void* key)
{
    const auto found = state->entries.find(key);
    return found == state->entries.end() ? nullptr : *found;
}

void* UT_BTR_TREE::s_remove(const void* key)
{
    const auto found = state->entries.find(key);
    if (found == state->entries.end()) {
        return nullptr;
    }
    void* entry = *found;
    state->entries.erase(found);
    return entry;
}

void UT_BTR_TREE::flush(void (*each)(void**, void*))
{
    for (void* entry : state->entries) {
        if (each != nullptr) {
            each(&entry, nullptr);
        }
        del_func(entry);
    }
    state->entries.clear();
}
