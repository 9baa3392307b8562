#include "core/presentation/CoverageList.h"

#include "core/presentation/Inspection.h"
#include "core/presentation/InspectionWords.h"
#include "core/presentation/SystemWords.h"

#include <map>

namespace tidemark {

namespace {

/// The captures that had one problem.
struct ProblemPeriod {
    Date first;
    Date last;
    std::size_t captures = 0;
};

std::map<std::string, ProblemPeriod> problemPeriods(const ObservationCoverageReport& report) {
    std::map<std::string, ProblemPeriod> periods;
    for (const auto& issue : report.accessIssues) {
        auto& period =
            periods.try_emplace(issue.message, ProblemPeriod{issue.timestamp, {}, 0}).first->second;
        period.last = issue.timestamp;
        ++period.captures;
    }
    return periods;
}

} // namespace

CoverageList CoverageList::of(const ObservationCoverageReport& report, const Calendar& calendar) {
    const auto moment = [&](Date date) { return inspectionWords::moment(date, calendar); };
    CoverageList list;
    for (const auto& gap : report.gaps)
        list.gaps.push_back({gap.isOngoing
                                 ? moment(gap.start) + " – now"
                                 : inspectionWords::interval(gap.start, gap.end, calendar),
                             gap.isOngoing});
    for (const auto& [message, period] : problemPeriods(report)) {
        std::string when = moment(period.first);
        if (period.captures > 1)
            when = inspectionWords::interval(period.first, period.last, calendar) + ", "
                   + std::to_string(period.captures) + " captures";
        list.problems.push_back({systemWords::shown(message), std::move(when)});
    }
    return list;
}

} // namespace tidemark
