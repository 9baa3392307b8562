#include "core/growth/GapRows.h"

#include "core/growth/BackgroundItemNotice.h"
#include "core/growth/DigestText.h"
#include "core/growth/HistoryDigest.h"
#include "core/timeline/ObservationCoverage.h"
#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/HistoryEvents.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace tidemark;
using test::hour;
using test::sized;
using test::utc;
using RunKind = RecorderRun::Kind;
using Activity = SystemActivity::Kind;

namespace {

struct Records {
    std::vector<Shared<Snapshot>> snapshots;
    std::vector<Shared<Event>> events{};
    std::vector<Shared<SystemActivity>> activity{};
    std::vector<RecorderRun> runs{};

    /// "start-end reason; " for each gap: times in hours, "…" after the end of an ongoing one, "?"
    /// where no reason is known.
    std::string gaps(double since = 0, double through = 24) const {
        std::string text;
        for (const auto& row : gapRows({snapshots, events, activity, runs}, Date{since * hour},
                                       Date{through * hour}, utc))
            text += std::to_string(std::lround(row.start.secondsSince2001 / hour)) + "-"
                    + std::to_string(std::lround(row.end.secondsSince2001 / hour))
                    + (row.isOngoing ? "…" : "") + " "
                    + (row.explanation.empty() ? "?" : row.explanation) + "; ";
        return text;
    }
};

/// Captures at 1:00, 11:00 and 11:30.
Records gapUntil11() {
    return {test::shared(sized(hour, 1), sized(11 * hour, 1), sized(11.5 * hour, 1))};
}

std::vector<Shared<SystemActivity>> slept(std::initializer_list<std::pair<double, double>> hours) {
    std::vector<Shared<SystemActivity>> activity;
    for (const auto& [from, to] : hours) {
        activity.emplace_back(
            SystemActivity::observed(Activity::sleepRequested, Date{from * hour}));
        activity.emplace_back(SystemActivity::observed(Activity::woke, Date{to * hour}));
    }
    return activity;
}

RecorderRun run(RunKind kind, double hours) {
    return {kind, Date{hours * hour}};
}

} // namespace

TEST(GapRows, SayWhyNothingWasObserved) {
    Records records = gapUntil11();
    EXPECT_EQ(records.gaps(0, 12), "1-11 ?; ");
    records.activity = slept({{2, 4}, {5, 8}});
    EXPECT_EQ(records.gaps(0, 12), "1-11 The computer was asleep.; ");
    records.activity = slept({{2, 4}, {5, 6}});
    EXPECT_EQ(records.gaps(0, 12), "1-11 ?; ") << "less than half is explained";

    const std::pair<std::vector<RecorderRun>, const char*> cases[] = {
        {{run(RunKind::started, 0), run(RunKind::stopped, 2), run(RunKind::started, 10.9)},
         "Tidemark was not running."},
        // Tidemark was killed. It was last known to run at 1:00, at the capture.
        {{run(RunKind::started, 0), run(RunKind::running, 1), run(RunKind::started, 10.9)},
         "Tidemark was not running."},
        {{run(RunKind::started, 0), run(RunKind::paused, 2), run(RunKind::stopped, 3),
          run(RunKind::started, 4), run(RunKind::resumed, 10.9)},
         "Recording was paused."},
        {{run(RunKind::started, 0), run(RunKind::stopped, 2), run(RunKind::started, 4)}, "?"},
        {{run(RunKind::started, 0), run(RunKind::running, 1), run(RunKind::running, 11)}, "?"},
    };
    for (const auto& [runs, reason] : cases) {
        records = gapUntil11();
        records.runs = runs;
        EXPECT_EQ(records.gaps(0, 12), "1-11 " + std::string(reason) + "; ");
    }
    records = gapUntil11();
    records.runs = {run(RunKind::stopped, 11.6)};
    EXPECT_EQ(records.gaps(2, 24), "12-24… Tidemark was not running.; 2-11 ?; ");
}

TEST(GapRows, ReferToTheEventThatEndsTheGap) {
    Records records = gapUntil11();
    records.events = test::shared(
        *ObservationCoverage::completedEvent(*records.snapshots[0], *records.snapshots[1]));
    const auto rows =
        gapRows({records.snapshots, records.events, {}, {}}, Date{0}, Date{12 * hour}, utc);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().eventID, records.events.front()->id);
    EXPECT_EQ(rows.front().title, "Nothing observed for 10 hours");
    EXPECT_EQ(rows.front().times, "1 Jan 2001, 01:00 – 1 Jan 2001, 11:00");
}

TEST(GapRows, ReportPlacesThatWereNotReadForAWhile) {
    const auto captures = [](std::initializer_list<const char*> issues) {
        std::vector<Snapshot> snapshots;
        for (const char* issue : issues) {
            snapshots.push_back(sized((1 + static_cast<double>(snapshots.size()) / 2) * hour, 1));
            if (*issue)
                snapshots.back().coverage.issues = {issue};
        }
        return Records{test::shared(std::move(snapshots))};
    };
    EXPECT_EQ(captures({"", "No access.", "No access.", ""}).gaps(0, 3), "2-3 No access.; ");
    EXPECT_EQ(captures({"", "No access.", "No access."}).gaps(0, 2.1), "2-2… No access.; ");
    EXPECT_EQ(captures({"No access.", "No access."}).gaps(0, 2), "") << "never read";
    EXPECT_EQ(captures({"", "No access.", ""}).gaps(2.5, 3), "") << "before the period";
}

TEST(RecorderRun, KeepsTheLastOfConsecutiveRunningRecords) {
    std::vector<RecorderRun> runs;
    for (const RunKind kind :
         {RunKind::started, RunKind::running, RunKind::running, RunKind::stopped})
        append(runs, {kind, Date{static_cast<double>(runs.size())}});
    EXPECT_EQ(runs, (std::vector<RecorderRun>{{RunKind::started, Date{0}},
                                              {RunKind::running, Date{2}},
                                              {RunKind::stopped, Date{2}}}));
    for (std::size_t i = 0; i < RecorderRun::limit; ++i)
        append(runs, {RunKind::paused, Date{100}});
    EXPECT_EQ(runs.size(), RecorderRun::limit);
    EXPECT_EQ(runs.front().kind, RunKind::paused);
}

namespace {

Shared<Event> added(const std::string& id, double hours, const std::vector<std::string>& labels) {
    Event event = test::event(id, hours * hour, EventCategory::background);
    event.intervalStart = Date{(hours - 0.5) * hour};
    for (const auto& label : labels)
        event.changes.push_back(change::BackgroundAdded{{Shared(test::agent(label))}});
    return Shared(std::move(event));
}

} // namespace

TEST(HistoryDigest, CountsAndNamesWhatHappenedInItsPeriod) {
    const std::vector<Shared<Event>> timeline{
        added("new", 3, {"backup", "sync"}), Shared(test::event("app", 2 * hour)),
        Shared(test::event("storage", hour, EventCategory::storage)),
        Shared(test::event("before", 0.5 * hour))};
    const auto known = test::source(
        {sized(0.5 * hour, 9 * test::gigabyte,
               {{"/a", {{"x", 1}}}, {"/b", {{"x", 1}}}, {"/c", {{"x", 1}}}, {"/d", {{"x", 1}}}}),
         sized(3 * hour, 5 * test::gigabyte,
               {{"/a", {{"x", 2}}}, {"/b", {{"x", 9}}}, {"/c", {{"x", 8}}}, {"/d", {{"x", 7}}}})});
    const GapSource gaps{known.journal->snapshots, known.journal->events, {}, {}};
    const auto digest =
        HistoryDigest::of(known, timeline, gaps, Date{0.5 * hour}, Date{3 * hour}, utc);
    EXPECT_EQ(digestText::counts(digest), "Applications 1 · Background items 1 · Storage 1");
    std::string text;
    for (const auto& item : digest.largest)
        text += item.name + " ";
    for (const auto& item : digest.background)
        text += item.name + " " + item.event->id + " ";
    EXPECT_EQ(text, "b c d backup new sync new ");
    EXPECT_EQ(digestText::gaps(digest), "Nothing was observed for 2 hours.");
    EXPECT_TRUE(digest.freeSpace.starts_with("4 GB less free"));
    EXPECT_TRUE(
        HistoryDigest::of(test::source({}), {}, {{}, {}, {}, {}}, Date{0}, Date{1}, utc).isEmpty());
}

TEST(BackgroundItemNotice, NamesTheNewItemsAndTheCaptureBefore) {
    const auto notice = [](const std::vector<Shared<Event>>& events) {
        return BackgroundItemNotice::of(newBackgroundItems(events), utc);
    };
    EXPECT_EQ(notice({Shared(test::event("app", 1))}), std::nullopt);
    EXPECT_EQ(notice({added("one", 3, {"backup"})}),
              (BackgroundItemNotice{"New background item: backup",
                                    "Found since the capture of 1 Jan 2001, 02:30.", "one"}));
    EXPECT_EQ(
        notice({added("one", 3, {"a", "b", "c", "d"}), added("two", 3, {"e\nf", "g"})}),
        (BackgroundItemNotice{"6 new background items",
                              "a, b, c, d, e\uFFFDf, and 1 more\nFound since the capture of 1 "
                              "Jan 2001, 02:30.",
                              "one"}));
}
