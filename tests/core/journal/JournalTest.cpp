#include "core/journal/Journal.h"

#include "tests/support/Observations.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

Shared<Event> eventAt(double time) {
    Event event;
    event.timestamp = Date{time};
    return event;
}

/// A snapshot with `count` applications, none of which any other number has.
Snapshot withApplications(unsigned number, int count) {
    Snapshot made = test::snapshot(number);
    for (int i = 0; i < count; ++i)
        made.applications.emplace_back(
            test::application(std::to_string(number) + "-" + std::to_string(i)));
    return made;
}

InstallationRecord installed(const char* name, double time) {
    return {name, "1", Date{time}, "package_source_apple", Date{9}};
}

std::string namesOf(const Journal& journal) {
    std::string names;
    for (const auto& record : journal.importedInstallations.value())
        names += record.name;
    return names;
}

} // namespace

TEST(Journal, ComparesWithTheSnapshotBefore) {
    Journal journal;
    journal.append(withApplications(1, 1), true);
    EXPECT_TRUE(journal.events.empty()) << "nothing to compare with";
    journal.append(withApplications(2, 1), false);
    EXPECT_TRUE(journal.events.empty()) << "a new starting point";
    Snapshot late = withApplications(3, 1);
    late.timestamp = Date{1e6};
    late.expectedCaptureInterval = 600;
    Snapshot unchanged = late;
    unchanged.timestamp = Date{2e6};
    journal.append(late, true);
    journal.append(unchanged, true);
    ASSERT_EQ(journal.events.size(), 3U);
    EXPECT_EQ(journal.events[0]->title, "2-0 Removed");
    EXPECT_EQ(journal.events[1]->title, "3-0 Installed");
    EXPECT_EQ(journal.events[2]->title, "Captures Resumed");
    EXPECT_EQ(journal.snapshots.size(), 4U);
    EXPECT_EQ(journal.snapshots[2]->timestamp, Date{1e6});
}

TEST(Journal, HoldsWhatTwoSnapshotsShareOnce) {
    Journal journal;
    Snapshot first = withApplications(1, 2);
    Snapshot second = withApplications(1, 2);
    second.applications[1] = test::application("1-1", "2");
    journal.append(first, true);
    journal.append(second, true);
    const auto& before = journal.snapshots[0]->applications;
    const auto& after = journal.snapshots[1]->applications;
    EXPECT_TRUE(before[0].sameObject(after[0]));
    EXPECT_EQ(*journal.snapshots[1], second);
}

TEST(Journal, KeepsThe720LatestSnapshots) {
    Journal journal;
    journal.baselines = {Baseline::named("Mine", test::snapshot(1))};
    for (unsigned number = 1; number <= 720; ++number)
        journal.append(test::snapshot(number), true);
    ASSERT_EQ(journal.snapshots.size(), 720U);
    EXPECT_EQ(journal.snapshots.front()->id, test::snapshot(1).id);
    journal.append(test::snapshot(721), true);
    ASSERT_EQ(journal.snapshots.size(), 720U);
    EXPECT_EQ(journal.snapshots.front()->id, test::snapshot(2).id);
    EXPECT_EQ(journal.snapshots.back()->id, test::snapshot(721).id);
    EXPECT_EQ(journal.baselines.size(), 1U);
}

TEST(Journal, KeepsThe10000LastEvents) {
    const auto filled = [](int count) {
        Journal journal;
        journal.snapshots = {test::snapshot(1)};
        for (int i = 0; i < count; ++i)
            journal.events.push_back(eventAt(1000 - i));
        return journal;
    };
    Journal journal = filled(9'999);
    journal.append(withApplications(2, 1), true);
    EXPECT_EQ(journal.events.size(), 10'000U);
    EXPECT_FALSE(journal.eventsPrunedThrough);
    journal.append(withApplications(3, 0), true);
    EXPECT_EQ(journal.events.size(), 10'000U);
    EXPECT_EQ(journal.eventsPrunedThrough, Date{1000});

    journal = filled(9'990);
    // The first ones to go are not the earliest ones, nor is the latest of them the last to go.
    journal.events[7] = eventAt(5000);
    journal.append(withApplications(2, 30), true);
    ASSERT_EQ(journal.events.size(), 10'000U);
    EXPECT_EQ(journal.events.front(), eventAt(1000 - 20));
    EXPECT_EQ(journal.eventsPrunedThrough, Date{5000});

    journal = filled(10'000);
    journal.eventsPrunedThrough = Date{8000};
    journal.append(withApplications(2, 1), true);
    EXPECT_EQ(journal.eventsPrunedThrough, Date{8000});
}

TEST(Journal, MergesInstallations) {
    Journal journal;
    EXPECT_EQ(journal.importInstallations({}), 0U);
    ASSERT_TRUE(journal.importedInstallations) << "an empty list is one";
    EXPECT_EQ(
        journal.importInstallations({installed("C", 3), installed("A", 1), installed("C", 3)}), 2U);
    InstallationRecord again = installed("A", 1);
    again.importedAt = Date{99};
    EXPECT_EQ(journal.importInstallations({again, installed("B", 2)}), 1U);
    EXPECT_EQ(namesOf(journal), "ABC");
    EXPECT_EQ(journal.importedInstallations->front().importedAt, Date{9}) << "the known one stays";

    std::ranges::reverse(*journal.importedInstallations);
    EXPECT_EQ(journal.importInstallations({installed("B", 2)}), 0U);
    EXPECT_EQ(namesOf(journal), "ABC");

    // Records of one moment stand by their id.
    const bool xFirst = installed("X", 5).id() < installed("Y", 5).id();
    journal.importInstallations({installed("Y", 5), installed("X", 5)});
    EXPECT_EQ(namesOf(journal), xFirst ? "ABCXY" : "ABCYX");

    const auto events = journal.installationEvents();
    ASSERT_EQ(events.size(), 5U);
    EXPECT_EQ(events[0]->id, installed("A", 1).id());
    EXPECT_TRUE(journal.events.empty());
    EXPECT_TRUE(Journal().installationEvents().empty());
}
