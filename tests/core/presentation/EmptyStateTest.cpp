#include "core/presentation/EmptyState.h"

#include "core/presentation/SystemWords.h"
#include "tests/support/Observations.h"

#include <gtest/gtest.h>

using namespace tidemark;

TEST(EmptyState, ShowsTheFirstReasonThatApplies) {
    Snapshot seen = test::snapshot(1);
    Snapshot partly = seen;
    partly.coverage.issues = {"Downloads: not read"};
    const ObservationCoverageReport ongoing{{{Date{0}, Date{9}, true}}, {}};
    const ObservationCoverageReport past{{{Date{0}, Date{9}, false}}, {}};
    using Action = EmptyState::Action;
    const struct {
        EmptyTimeline timeline;
        const char* title;
        const char* explanation;
        Action action;
    } cases[] = {
        {{.isUnreadable = true, .latest = nullptr, .coverage = ongoing},
         "The History Couldn’t Be Read",
         "Nothing is shown or captured",
         Action::none},
        {{.latest = nullptr, .coverage = ongoing},
         "Your Mac’s Story Starts Here",
         "The first observation",
         Action::checkNow},
        {{.latest = &partly, .coverage = ongoing, .captures = 1},
         "Some Locations Couldn’t Be Observed",
         "No matching changes were recorded. Open Observation Coverage",
         Action::openCoverage},
        {{.latest = &seen, .coverage = ongoing, .captures = 1},
         "Waiting for a New Observation",
         "Tidemark has not captured a recent observation.",
         Action::checkNow},
        {{.latest = &seen, .coverage = past, .captures = 1},
         "Starting Point Saved",
         "Future observations",
         Action::checkNow},
        {{.latest = &seen, .coverage = past, .captures = 2},
         "No Matching Changes Recorded",
         "No matching changes were recorded in this range.",
         Action::openCoverage},
        {{.latest = &seen, .captures = 2},
         "No Matching Changes Recorded",
         "No recorded events match",
         Action::none},
        {{.latest = nullptr, .place = WorkspaceDestination::snapshots},
         "A reference point for your Mac",
         "Save a snapshot",
         Action::saveSnapshot},
        {{.latest = &seen,
          .captures = 2,
          .place = WorkspaceDestination::snapshots,
          .isSnapshotOpen = true},
         "No Matching Changes Recorded",
         "No recorded events match",
         Action::none},
        {{.latest = &seen, .place = WorkspaceDestination::clipboard, .absentSource = "No clips."},
         "No Matching Changes Recorded",
         "No clips.",
         Action::none},
    };
    for (const auto& [timeline, title, explanation, action] : cases) {
        const EmptyState state = emptyState(timeline);
        EXPECT_EQ(state.title, systemWords::shown(title));
        EXPECT_TRUE(state.explanation.starts_with(explanation)) << state.explanation;
        EXPECT_EQ(state.action, action) << title;
        EXPECT_EQ(state.actionLabel.empty(), action == Action::none);
    }
}
