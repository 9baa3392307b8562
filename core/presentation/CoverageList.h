#pragma once

#include "core/base/Calendar.h"
#include "core/timeline/ObservationCoverage.h"

#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// What the coverage report lists: when nothing was captured, and what captures could not see.
struct CoverageList {
    static constexpr std::string_view title = "Coverage";
    static constexpr std::string_view explanation = "Observation gaps and access limitations";

    struct Gap {
        /// "12 Mar 2026, 10:00:00 – now".
        std::string when;
        bool isOngoing = false;
    };
    /// One problem, however many captures met it.
    struct AccessProblem {
        std::string message;
        /// When it was met, and by how many captures where that is several.
        std::string when;
    };

    /// In ascending time.
    std::vector<Gap> gaps;
    /// In ascending order of the messages.
    std::vector<AccessProblem> problems;

    bool isEmpty() const { return gaps.empty() && problems.empty(); }

    static CoverageList of(const ObservationCoverageReport& report, const Calendar& calendar);
};

} // namespace tidemark
