/// @file
/// @brief The one constant node of the process.
#pragma once

namespace basbdd {

/// The index of the constant node; also the free entry of a support list and "no variable".
constexpr unsigned short no_variable = 0xFFFF;

/// @brief Makes the constant node unless it is there, whatever thread asks. It is never freed.
/// @return whether this call has made it
bool make_constants();

} // namespace basbdd
