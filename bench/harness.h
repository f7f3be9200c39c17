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
template <typename work_type>
double timed(const work_type& work, int repeats)
{
    const double start = cpu_seconds();
    for (int i = 0; i < repeats; ++i) {
        work();
    }
    return (cpu_seconds() - start) / repeats;
}

/// Calls that make a sample of some two milliseconds; the first call also warms up.
template <typename work_type>
int calibrated_repeats(const work_type& work)
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

/// CPU seconds of one call of each contender, and the ratio of the two.
struct comparison {
    double work;
    double partner;
    double ratio;
};

/// @brief Times both contenders in turn, round by round, and answers the medians over the rounds:
/// the machine's drift cancels out of their ratio.
///
/// What the contenders call is compiled into the loop where it can be.
template <typename work_type, typename partner_type>
comparison compared(const work_type& work, const partner_type& partner, int rounds = 15)
{
    const int work_repeats = calibrated_repeats(work);
    const int partner_repeats = calibrated_repeats(partner);
    std::vector<double> work_times;
    std::vector<double> partner_times;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        work_times.push_back(timed(work, work_repeats));
        partner_times.push_back(timed(partner, partner_repeats));
        ratios.push_back(work_times.back() / partner_times.back());
    }
    return {median(work_times), median(partner_times), median(ratios)};
}

/// The median ratio of two contenders that are called alike.
inline double ratio(const std::function<void()>& work, const std::function<void()>& floor,
                    int rounds = 15)
{
    return compared(work, floor, rounds).ratio;
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
