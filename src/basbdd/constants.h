/// @file
/// @brief The one constant node of the process.
#pragma once

namespace basbdd {

/// The index of the constant node; also the free entry of a support list and "no variable".
constexpr unsigned short no_variable = 0xFFFF;

/// @brief Makes the constant node unless it is there. It is never freed.
void ensure_constants();

} // namespace basbdd
