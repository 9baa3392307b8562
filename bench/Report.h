#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

/// Functions that the benchmarks share: times, medians, and rows of a figure and its bound.
namespace tidemark::bench {

/// Seconds that `work` takes.
template <class Work>
double seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// The median of `runs` measurements that `measure` returns.
template <class Measure>
double medianOf(int runs, Measure measure) {
    std::vector<double> values;
    for (int i = 0; i < runs; ++i)
        values.push_back(measure());
    return median(std::move(values));
}

/// Prints one row: what was measured, the figure, its bound, and whether it is met. A figure
/// without a bound is for comparison.
inline void row(const std::string& what, double figure, const char* unit, double bound = 0) {
    if (bound > 0)
        std::printf("%-62s %9.2f %-4s bound %8.2f  %s\n", what.c_str(), figure, unit, bound,
                    figure <= bound ? "ok" : "OVER");
    else
        std::printf("%-62s %9.2f %s\n", what.c_str(), figure, unit);
    std::fflush(stdout);
}

} // namespace tidemark::bench
