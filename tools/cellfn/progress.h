/// @file
/// @brief A line on a terminal that tells how far long work has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace cellfn {

/// @brief Shows `what: item of count` on standard error when that is a terminal and the work has
/// taken a while; prints nothing anywhere else. The line is gone when the object is.
class progress {
public:
    progress(std::string what, std::size_t count);
    progress(const progress&) = delete;
    progress& operator=(const progress&) = delete;
    ~progress();

    /// @brief The work on the next item begins.
    /// @param is_long  it may take a while on its own, so it is shown at once
    void begin_item(bool is_long = false);

    /// Takes the line away, for other output to come.
    void hide();

private:
    using clock = std::chrono::steady_clock;
    std::string label;
    std::size_t total;
    std::size_t item = 0;
    bool is_terminal;
    bool is_shown = false;
    clock::time_point next_time;
};

} // namespace cellfn
