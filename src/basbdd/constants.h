/// @file
/// @brief The one constant node of the process.
#pragma once

namespace basbdd {

/// No variable: that of the constant node, of a free entry in a support list, of an unknown signal.
constexpr unsigned short no_variable = 0xFFFF;

/// @brief Makes the constant node unless it is there, whatever thread asks. It is never freed.
/// @return whether this call has made it
bool make_constants();

} // namespace basbdd
