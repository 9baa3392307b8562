#pragma once

#include "core/presentation/WorkspaceDestination.h"
#include "core/timeline/ObservationCoverage.h"

#include <cstddef>
#include <optional>
#include <string>

namespace tidemark {

/// The texts shown instead of an empty list: why it is empty, and what the user can do.
struct EmptyState {
    enum class Action { none, checkNow, openCoverage, saveSnapshot };

    std::string title;
    std::string explanation;
    /// Name of the symbol image.
    std::string symbol;
    Action action = Action::none;
    /// The label of the button; empty without a button.
    std::string actionLabel{};
    bool isActionEnabled = true;

    bool operator==(const EmptyState&) const = default;
};

/// The state from which the texts are made.
struct EmptyTimeline {
    /// True when there is a history that could not be read.
    bool isUnreadable = false;
    /// Null when nothing was captured yet.
    const Snapshot* latest = nullptr;
    /// Gaps and problems since the open snapshot, or in the time window.
    ObservationCoverageReport coverage{};
    /// Number of captures that are kept.
    std::size_t captures = 0;
    WorkspaceDestination place = WorkspaceDestination::timeline;
    bool isSnapshotOpen = false;
    /// False while a capture is not possible.
    bool canCapture = true;
    /// Why the place is always empty on this system, if it is.
    std::optional<std::string> absentSource{};
};

EmptyState emptyState(const EmptyTimeline& timeline);

} // namespace tidemark
