#pragma once

#include "core/base/Calendar.h"
#include "core/timeline/ObservationCoverage.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// The contents of the coverage report: the times without captures, and the problems of captures.
struct CoverageList {
    static constexpr std::string_view title = "Coverage";
    static constexpr std::string_view explanation = "Observation gaps and access limitations";

    struct Gap {
        /// "12 Mar 2026, 10:00:00 – now".
        std::string when;
        bool isOngoing = false;
    };
    /// One problem, listed once for all captures that had it.
    struct AccessProblem {
        std::string message;
        /// The time of the problem, and the number of captures if there are several.
        std::string when;
    };

    /// In order of time.
    std::vector<Gap> gaps;
    /// In ascending order of the messages.
    std::vector<AccessProblem> problems;

    bool isEmpty() const { return gaps.empty() && problems.empty(); }

    static CoverageList of(const ObservationCoverageReport& report, const Calendar& calendar);
};

} // namespace tidemark
