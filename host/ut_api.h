/// @file
/// @brief The export mark of the host services.
#pragma once

/// A service keeps default visibility wherever it is compiled, so that the process can bind it.
#define UT_API __attribute__((visibility("default")))
