/// @file
/// @brief What the library says to this host while it works.
#pragma once

#include <string>

namespace cellfn {

/// The messages that the library sent since the last call, joined by "; "; empty when it sent none.
std::string take_messages();

} // namespace cellfn
