#include "core/presentation/EmptyState.h"

#include "core/presentation/SystemWords.h"
#include "core/presentation/WorkspaceText.h"

#include <algorithm>

namespace tidemark {

namespace {

using Action = EmptyState::Action;

constexpr const char* nothingRecorded = "No Matching Changes Recorded";

/// A state whose texts are in the words of this system.
EmptyState made(std::string_view title, std::string_view explanation, std::string_view symbol,
                Action action = Action::none, std::string_view label = {}) {
    return {systemWords::shown(title), systemWords::shown(explanation), std::string(symbol), action,
            std::string(label)};
}

EmptyState withCheck(std::string_view title, std::string_view explanation,
                     std::string_view symbol) {
    return made(title, explanation, symbol, Action::checkNow, "Check Now");
}

EmptyState withCoverage(std::string_view title, std::string_view explanation,
                        std::string_view symbol) {
    return made(title, explanation, symbol, Action::openCoverage, workspaceText::openCoverage);
}

EmptyState firstThatApplies(const EmptyTimeline& timeline) {
    const auto& gaps = timeline.coverage.gaps;
    const std::string_view symbol = facts(timeline.place).symbol;
    // The message above the list says why, and has the button that tries again.
    if (timeline.isUnreadable)
        return made("The History Couldn’t Be Read",
                    "Nothing is shown or captured until it can be read. Your existing file has not "
                    "been overwritten.",
                    "exclamationmark.circle");
    if (timeline.place == WorkspaceDestination::snapshots && !timeline.isSnapshotOpen)
        return made("A reference point for your Mac",
                    "Save a snapshot, then explore its timeline or compare it with your latest "
                    "observation.",
                    symbol, Action::saveSnapshot, "Save snapshot");
    if (timeline.absentSource)
        return made(nothingRecorded, *timeline.absentSource, symbol);
    if (!timeline.latest)
        return withCheck("Your Mac’s Story Starts Here",
                         "The first observation gives Tidemark a starting point. Future changes "
                         "will appear here.",
                         "clock");
    if (!timeline.latest->coverage.issues.empty())
        return withCoverage("Some Locations Couldn’t Be Observed",
                            "No matching changes were recorded. Open Observation Coverage to see "
                            "which locations were unavailable.",
                            "exclamationmark.circle");
    if (std::ranges::any_of(gaps, &ObservationGap::isOngoing))
        return withCheck("Waiting for a New Observation",
                         "Tidemark has not captured a recent observation. Use Check Now to capture "
                         "your Mac’s current state.",
                         "clock");
    if (timeline.captures == 1)
        return withCheck("Starting Point Saved",
                         "Future observations can be compared with this starting point. No "
                         "observed change history is available yet.",
                         "flag");
    if (!gaps.empty())
        return withCoverage(nothingRecorded,
                            "No matching changes were recorded in this range. Changes that "
                            "happened and were reversed between observations may be missing.",
                            symbol);
    return made(nothingRecorded,
                "No recorded events match the selected period and filters. Only readable locations "
                "and meaningful changes are compared.",
                symbol);
}

} // namespace

EmptyState emptyState(const EmptyTimeline& timeline) {
    EmptyState state = firstThatApplies(timeline);
    const bool captures = state.action == Action::checkNow || state.action == Action::saveSnapshot;
    state.isActionEnabled = timeline.canCapture || !captures;
    return state;
}

} // namespace tidemark
