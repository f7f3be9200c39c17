/// @file
/// @brief The host's balanced tree, specialised by deriving from it.
#pragma once

#include "ut_store.h"

/// @addtogroup services Host services
/// @{

/// @brief An ordered set of pointers, compared and freed by the hooks of a derived class.
///
/// Virtual slots: destructor, `s_add`, `s_find`, `s_remove`, `del_func`, `comp_func`.
class UT_API UT_BTR_TREE : public UT_STORE {
public:
    /// @brief An empty tree.
    /// @param keep_flag  kept in `flag`, which the library does not look at
    explicit UT_BTR_TREE(unsigned char keep_flag);
    /// Frees the container; no entry, for which see `flush`.
    ~UT_BTR_TREE() override;

    void* s_add(const void* key, void* data) override; ///< three comparisons after `s_find`
    void* s_find(const void* key) override;            ///< in logarithmic time
    void* s_remove(const void* key) override;          ///< in logarithmic time
    virtual void del_func(void* entry) = 0; ///< frees one entry, which the tree no longer holds
    /// Negative, zero or positive as `key` orders before, equal to or after `entry`.
    virtual int comp_func(void* key, const char* entry) = 0;

    /// @brief Empties the tree. Every entry goes through `each` (as the entry's address and null)
    /// when that is given, and is freed through `del_func`. A derived destructor calls this
    /// whatever the flag, for the hooks are gone in the destructor of the base.
    void flush(void (*each)(void**, void*));

    class STATE;        ///< the host's own
    STATE* state;       ///< the container itself
    unsigned char flag; ///< the constructor's argument
};

/// @}
