/// @file
/// @brief This host's signals.
#pragma once

#include <string>

/// The record behind the library's pointers: here a pin of a cell.
class TECHMAP_SIG {
public:
    std::string name;
};
