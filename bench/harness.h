/// @file
/// @brief Ratios between contenders that are timed in the same run.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Keeps the compiler from dropping the work that made `value`.
template <typename kept>
void keep(const kept& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// CPU seconds of this thread.
inline double cpu_seconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// CPU seconds of one call of `work`, averaged over `repeats` calls.
inline double timed(const std::function<void()>& work, int repeats)
{
    const double start = cpu_seconds();
    for (int i = 0; i < repeats; ++i) {
        work();
    }
    return (cpu_seconds() - start) / repeats;
}

/// Calls that make a sample of some two milliseconds; the first call also warms up.
inline int calibrated_repeats(const std::function<void()>& work)
{
    constexpr double sample_seconds = 2e-3;
    timed(work, 1);
    int repeats = 1;
    while (repeats < (1 << 24) && timed(work, repeats) * repeats < sample_seconds) {
        repeats *= 2;
    }
    return repeats;
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// @brief Times both contenders in turn, round by round, and answers the median of the rounds'
/// ratios: the machine's drift cancels out.
inline double ratio(const std::function<void()>& work, const std::function<void()>& floor,
                    int rounds = 15)
{
    const int work_repeats = calibrated_repeats(work);
    const int floor_repeats = calibrated_repeats(floor);
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const double work_time = timed(work, work_repeats);
        ratios.push_back(work_time / timed(floor, floor_repeats));
    }
    return median(ratios);
}

inline double geometric_mean(const std::vector<double>& values)
{
    double sum = 0;
    for (const double value : values) {
        sum += std::log(value);
    }
    return std::exp(sum / static_cast<double>(values.size()));
}

/// What a program measures, and the columns of its rows.
inline void print_heading(const char* what, const char* partner)
{
    std::printf("%s: CPU time as a multiple of that of %s\n%-44s %8s  %11s\n", what, partner, "",
                "multiple", "at most");
}

/// One row of a result table: the geometric mean of the ratios against the goal.
inline void print_row(const std::string& name, const std::vector<double>& ratios, double goal)
{
    const double mean = geometric_mean(ratios);
    std::printf("%-44s %8.2f  goal %6.2f  %s\n", name.c_str(), mean, goal,
                mean <= goal ? "reached" : "MISSED");
    std::fflush(stdout);
}

} // namespace bench
