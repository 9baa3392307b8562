#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace tidemark::bench {

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// One row of the table that every benchmark prints: what was measured, the figure, the bound it
/// is held to, and whether it keeps it. Returns whether it does.
inline bool report(const std::string& what, double figure, double bound, const std::string& unit) {
    const bool kept = figure <= bound;
    const auto cell = [&](double value) {
        char text[64];
        std::snprintf(text, sizeof text, "%.3g%s%s", value, unit.empty() ? "" : " ", unit.c_str());
        return std::string(text);
    };
    std::printf("%-62s | %12s | %14s | %s\n", what.c_str(), cell(figure).c_str(),
                ("≤ " + cell(bound)).c_str(), kept ? "ok" : "over");
    std::fflush(stdout);
    return kept;
}

} // namespace tidemark::bench
