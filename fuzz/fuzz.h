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
class FUZZ_INPUT {
public:
    FUZZ_INPUT(const std::uint8_t* data, std::size_t size) : next_(data), end_(data + size) {}

    bool empty() const { return next_ == end_; }
    unsigned byte() { return empty() ? 0U : *next_++; }
    unsigned below(unsigned bound) { return byte() % bound; }
    std::string rest() const { return {next_, end_}; }

private:
    const std::uint8_t* next_;
    const std::uint8_t* end_;
};
