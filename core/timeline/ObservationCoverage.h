#pragma once

#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Where the history knows nothing: spells without captures.
namespace ObservationCoverage {

/// The event that tells that captures resumed after a longer silence than the captures' own
/// interval allows. None unless both snapshots know that interval.
std::optional<Event> completedEvent(const Snapshot& from, const Snapshot& to);

} // namespace ObservationCoverage

/// An access problem that one capture met.
struct ObservationAccessIssue {
    /// When the capture ran.
    Date timestamp;
    std::string message;

    std::string id() const;
    bool operator==(const ObservationAccessIssue&) const = default;
};

/// The gaps and the access problems of a period, each in ascending time. Made on demand.
struct ObservationCoverageReport {
    std::vector<ObservationGap> gaps;
    std::vector<ObservationAccessIssue> accessIssues;

    /// What `snapshots` tell of the time after `after` until `through`. A snapshot before `after`
    /// can still begin a gap that reaches into the period.
    static ObservationCoverageReport build(const std::vector<Shared<Snapshot>>& snapshots,
                                           Date after, Date through);

    bool operator==(const ObservationCoverageReport&) const = default;
};

} // namespace tidemark
