/// @file
/// @brief The host's hash table, specialised by deriving from it.
#pragma once

#include "ut_store.h"

/// @addtogroup services Host services
/// @{

/// @brief A set of pointers, hashed, compared and freed by the hooks of a derived class.
///
/// Virtual slots: destructor, `s_add`, `s_find`, `s_remove`, `hash_func`, `comp_func`, `del_func`.
class UT_API UT_HASH : public UT_STORE {
public:
    /// @brief An empty table.
    /// @param size       the number of buckets that the caller has in mind (a prime); only a hint
    /// @param keep_flag  kept in `flag`; when it is not 0 the derived destructor empties the table
    UT_HASH(unsigned int size, unsigned char keep_flag);
    /// Frees the container; no entry, for which see `process_and_kill`.
    ~UT_HASH() override;

    void* s_add(const void* key, void* data) override;       ///< in constant time on average
    void* s_find(const void* key) override;                  ///< in constant time on average
    void* s_remove(const void* key) override;                ///< in constant time on average
    virtual unsigned int hash_func(const void* key) = 0;     ///< the hash of a key
    virtual int comp_func(const void* key, void* entry) = 0; ///< 0 when the two are equal
    virtual void del_func(void* entry) = 0; ///< frees one entry, which the table no longer holds

    /// @brief Empties the table. Every entry goes through `each` when that is given, and is freed
    /// through `del_func` when `kill` is not 0. A derived destructor calls this, for the hooks are
    /// gone in the destructor of the base.
    void process_and_kill(unsigned char kill, void (*each)(void*));

    class STATE;        ///< the host's own
    STATE* state;       ///< the container itself
    unsigned char flag; ///< the constructor's argument
};

/// @}
