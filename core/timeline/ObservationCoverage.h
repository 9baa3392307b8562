#pragma once

#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Finds the periods without captures.
namespace ObservationCoverage {

/// The event "Captures Resumed", if the time between the snapshots is longer than the longer of
/// their capture intervals allows. Absent unless both have an interval.
std::optional<Event> completedEvent(const Snapshot& from, const Snapshot& to);

/// How many seconds after this snapshot the next one may follow without a gap between them.
double allowance(const Snapshot& snapshot);

} // namespace ObservationCoverage

/// An access problem of one capture.
struct ObservationAccessIssue {
    /// When the capture ran.
    Date timestamp;
    std::string message;

    std::string id() const;
    bool operator==(const ObservationAccessIssue&) const = default;
};

/// The gaps and the access problems of a period, each in order of time. Computed on demand, not
/// stored.
struct ObservationCoverageReport {
    std::vector<ObservationGap> gaps;
    std::vector<ObservationAccessIssue> accessIssues;

    /// The report for the period from `after` to `through`, both included. Of a gap that began
    /// before `after`, the part within the period is included.
    static ObservationCoverageReport build(const std::vector<Shared<Snapshot>>& snapshots,
                                           Date after, Date through);

    bool operator==(const ObservationCoverageReport&) const = default;
};

} // namespace tidemark
