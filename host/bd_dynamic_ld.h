/// @file
/// @brief The host's load identifier.
#pragma once

#include "ut_api.h"

#include <cstdint>

/// @addtogroup services Host services
/// @{

/// @brief Identifies a load of the library.
///
/// The library defines the object as zero; a definition in the loading process wins over it.
class UT_API BD_DYNAMIC_LD {
public:
    static std::int64_t dynamic_id; ///< copied by three units of the library while it is loaded
};

/// @}
