/// @file
/// @brief A wrong argument.
#pragma once

#include <stdexcept>

namespace cellfn {

/// The user's argument cannot be what it must be; the program ends with the status for misuse.
class usage_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace cellfn
