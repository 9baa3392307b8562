#include "core/timeline/ObservationCoverage.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace tidemark {

namespace {

/// A capture that is late by at most this many seconds leaves no gap.
constexpr double leastGrace = 900;
/// Used for a snapshot without an interval: there is a gap if the next one is more than a day
/// later.
constexpr double defaultAllowance = 86'400;

bool isValid(const std::optional<double>& interval) {
    return interval && std::isfinite(*interval) && *interval > 0;
}

/// The time without captures, in seconds, above which there is a gap.
double allowanceOf(double interval) {
    return std::max(interval + leastGrace, 2 * interval);
}

} // namespace

std::optional<Event> ObservationCoverage::completedEvent(const Snapshot& from, const Snapshot& to) {
    if (!isValid(from.expectedCaptureInterval) || !isValid(to.expectedCaptureInterval))
        return std::nullopt;
    const double interval = std::max(*from.expectedCaptureInterval, *to.expectedCaptureInterval);
    // Negated so that NaN makes no event either.
    if (!(to.timestamp - from.timestamp > allowanceOf(interval)))
        return std::nullopt;
    Event event;
    event.id = "coverage-" + from.id.text() + "-" + to.id.text();
    event.timestamp = to.timestamp;
    event.intervalStart = from.timestamp;
    event.title = "Captures Resumed";
    event.subtitle = "An extended interval without saved captures";
    event.category = EventCategory::system;
    event.symbol = "clock.badge.checkmark";
    event.observationGap = ObservationGap{from.timestamp, to.timestamp, false};
    return event;
}

double ObservationCoverage::allowance(const Snapshot& snapshot) {
    return isValid(snapshot.expectedCaptureInterval)
               ? allowanceOf(*snapshot.expectedCaptureInterval)
               : defaultAllowance;
}

std::string ObservationAccessIssue::id() const {
    return shortestText(timestamp.secondsSince1970()) + "-" + message;
}

ObservationCoverageReport
ObservationCoverageReport::build(const std::vector<Shared<Snapshot>>& snapshots, Date after,
                                 Date through) {
    std::vector<const Snapshot*> inOrder;
    for (const auto& snapshot : snapshots)
        if (snapshot->timestamp <= through)
            inOrder.push_back(&*snapshot);
    std::ranges::stable_sort(inOrder, {},
                             [](const Snapshot* s) { return s->timestamp.secondsSince2001; });

    ObservationCoverageReport report;
    for (std::size_t i = 0; i < inOrder.size(); ++i) {
        const Snapshot& snapshot = *inOrder[i];
        if (snapshot.timestamp >= after) {
            const std::set<std::string> messages(snapshot.coverage.issues.begin(),
                                                 snapshot.coverage.issues.end());
            for (const auto& message : messages)
                report.accessIssues.push_back({snapshot.timestamp, message});
        }
        const bool isLast = i + 1 == inOrder.size();
        const Date next = isLast ? through : inOrder[i + 1]->timestamp;
        const double limit = ObservationCoverage::allowance(snapshot);
        if (next - snapshot.timestamp > limit && next > after)
            report.gaps.push_back({std::max(after, snapshot.timestamp), next, isLast});
    }
    return report;
}

} // namespace tidemark
