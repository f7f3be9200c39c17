/// @file
/// @brief What this host keeps of the library's messages.
#pragma once

#include <string>
#include <vector>

/// Status messages and internal-error reports, one line each.
std::vector<std::string>& message_log();
