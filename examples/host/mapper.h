/// @file
/// @brief The part of the host that uses the library.
#pragma once

/// A C name, for a host that looks it up at run time.
extern "C" void run_mapper();
