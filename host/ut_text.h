/// @file
/// @brief The host's formatter and its sink of status messages, called from every thread that uses
/// the library.
#pragma once

#include "ut_api.h"

/// @addtogroup services Host services
/// @{

/// @brief Formats like printf into a new string, which the receiver of the text frees.
/// @return memory from malloc; throws std::bad_alloc
UT_API char* neoform(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// @brief Takes a text made by `neoform` as a status message for the user, and owns it.
UT_API void ut_status(const char* text);

/// @}
