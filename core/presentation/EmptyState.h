#pragma once

#include "core/presentation/WorkspaceDestination.h"
#include "core/timeline/ObservationCoverage.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tidemark {

/// What stands in place of a list without events: why it is empty, and what can be done.
struct EmptyState {
    enum class Action { none, checkNow, openCoverage, saveSnapshot };

    std::string title;
    std::string explanation;
    /// Name of the symbol image.
    std::string symbol;
    Action action = Action::none;
    /// Of the button; empty without one.
    std::string actionLabel{};

    bool operator==(const EmptyState&) const = default;
};

/// What an empty list is explained by.
struct EmptyTimeline {
    /// Null when nothing was captured yet.
    const Snapshot* latest = nullptr;
    /// Since the open snapshot, or in the time window.
    ObservationCoverageReport coverage{};
    /// How many captures are kept.
    std::size_t captures = 0;
    WorkspaceDestination place = WorkspaceDestination::timeline;
    bool isSnapshotOpen = false;
    /// Why nothing can come to the place on this system, if so.
    std::optional<std::string> absentSource{};
};

EmptyState emptyState(const EmptyTimeline& timeline);

} // namespace tidemark
