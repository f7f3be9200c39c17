/// @file
/// @brief The operations that both host containers have in common.
#pragma once

#include "ut_api.h"

/// @addtogroup services Host services
/// @{

/// @brief The first four virtual slots of `UT_HASH` and `UT_BTR_TREE`, in this order.
///
/// A caller that holds either container works through this base. The class has no state and no
/// symbol of its own in the library.
class UT_API UT_STORE {
public:
    UT_STORE() = default;
    UT_STORE(const UT_STORE&) = delete;
    UT_STORE& operator=(const UT_STORE&) = delete;
    virtual ~UT_STORE() = default;

    /// @brief Stores `key` unless an equal entry is there. @return the stored entry
    ///
    /// `data` is for other users of the container; the library passes null.
    virtual void* s_add(const void* key, void* data) = 0;
    /// @brief The entry equal to `key`, as the pointer that was given to `s_add`; null if none.
    virtual void* s_find(const void* key) = 0;
    /// @brief Takes the entry equal to `key` out without freeing it. @return the entry or null
    virtual void* s_remove(const void* key) = 0;
};

/// @}
