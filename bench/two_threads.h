/// @file
/// @brief What a second thread brings.
#pragma once

#include "harness.h"

#include <chrono>
#include <thread>
#include <vector>

namespace bench {

/// How many times as fast two threads do the same work as one: the median of interleaved runs.
template <typename task>
double speed_up(const task& work)
{
    const auto seconds = [](const auto& act) {
        const auto start = std::chrono::steady_clock::now();
        act();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    std::vector<double> ratios;
    for (int round = 0; round < 15; ++round) {
        const double alone = seconds([&] {
            work();
            work();
        });
        ratios.push_back(alone / seconds([&] {
                             std::thread other(work);
                             work();
                             other.join();
                         }));
    }
    return median(ratios);
}

} // namespace bench
