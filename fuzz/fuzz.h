/// @file
/// @brief What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

/// Stops the run, so that the fuzzer keeps the input.
inline void check(bool holds, const char* what)
{
    if (!holds) {
        std::cerr << "failed: " << what << '\n';
        std::abort();
    }
}

/// The bytes of one run, taken one at a time; zeros when they are used up.
class fuzz_input {
public:
    fuzz_input(const std::uint8_t* data, std::size_t size) : next(data), limit(data + size) {}

    bool empty() const { return next == limit; }
    unsigned byte() { return empty() ? 0U : *next++; }
    unsigned below(unsigned bound) { return byte() % bound; }
    std::string rest() const { return {next, limit}; }

private:
    const std::uint8_t* next;
    const std::uint8_t* limit;
};
