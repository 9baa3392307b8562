#include "core/journal/Journal.h"

#include "core/storage/FolderInspection.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

Shared<Event> eventAt(double time) {
    Event event;
    event.timestamp = Date{time};
    return Shared(std::move(event));
}

/// A snapshot with `count` applications that differ for each `number`.
Snapshot withApplications(unsigned number, int count) {
    Snapshot made = test::snapshot(number);
    for (int i = 0; i < count; ++i)
        test::add(made.applications,
                  test::application(std::to_string(number) + "-" + std::to_string(i)));
    return made;
}

/// A snapshot of a folder with `count` files and a subfolder.
Snapshot withFiles(unsigned number, int count) {
    SizeByName files;
    for (int i = 0; i < count; ++i)
        files[std::to_string(i)] = 1'000'000;
    StorageMeasurementRecord child;
    child.item.emplace(StorageMeasurementItem::directory("/home/sub", Date{1}));
    child.measuredItem.emplace(StorageMeasurementItem(*child.item));
    child.breakdown.emplace({{"x", 5}});
    child.bytes = 5;
    child.allocatedBytes = 5;
    child.measuredAt = Date{1.0 * number};
    FolderStorageReport report;
    report.path = "/home";
    report.directFileBytes = 1'000'000LL * count;
    report.directFileSizes.emplace(std::move(files));
    report.children.records = test::shared(std::move(child));
    report.sampledAt = Date{1.0 * number};
    Snapshot made = test::snapshot(number);
    made.folders.emplace_back(*report.folderSize());
    made.folderStorage.emplace().push_back(std::move(report));
    return made;
}

/// How many file names the size of the folder has, followed by how many its report has; "-" for one
/// that has none.
std::string fileNames(const Snapshot& snapshot) {
    const auto count = [](const auto& folder) {
        return folder.directFileSizes ? std::to_string(folder.directFileSizes->size()) : "-";
    };
    return count(*snapshot.folders.at(0)) + count(snapshot.folderStorage->at(0));
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
    journal.append(Shared(withApplications(1, 1)), true);
    EXPECT_TRUE(journal.events.empty()) << "nothing to compare with";
    journal.append(Shared(withApplications(2, 1)), false);
    EXPECT_TRUE(journal.events.empty()) << "a new starting point";
    Snapshot late = withApplications(3, 1);
    late.timestamp = Date{1e6};
    late.expectedCaptureInterval = 600;
    Snapshot unchanged = late;
    unchanged.timestamp = Date{2e6};
    journal.append(Shared(Snapshot(late)), true);
    journal.append(Shared(Snapshot(unchanged)), true);
    ASSERT_EQ(journal.events.size(), 3U);
    EXPECT_EQ(journal.events[0]->title, "2-0 Removed");
    EXPECT_EQ(journal.events[1]->title, "3-0 Installed");
    EXPECT_EQ(journal.events[2]->title, "Captures Resumed");
    EXPECT_EQ(journal.snapshots.size(), 4U);
    EXPECT_EQ(journal.snapshots[2]->timestamp, Date{1e6});
}

TEST(Journal, SharesEqualApplications) {
    Journal journal;
    Snapshot first = withApplications(1, 2);
    Snapshot second = withApplications(1, 2);
    second.applications.emplace(
        test::shared(*(*second.applications)[0], test::application("1-1", "2")));
    journal.append(Shared(Snapshot(first)), true);
    journal.append(Shared(Snapshot(second)), true);
    const auto& before = *journal.snapshots[0]->applications;
    const auto& after = *journal.snapshots[1]->applications;
    EXPECT_TRUE(before[0].sameObject(after[0]));
    EXPECT_EQ(*journal.snapshots[1], second);
}

TEST(Journal, SharesTheUnchangedPartsOfAMeasuredFolder) {
    Journal journal;
    journal.append(Shared(withFiles(1, 3)), true);
    journal.append(Shared(withFiles(2, 3)), true);
    const Snapshot& before = *journal.snapshots[0];
    const Snapshot& after = *journal.snapshots[1];
    EXPECT_EQ(after, withFiles(2, 3));
    EXPECT_TRUE(before.folders[0]->breakdown.sameObject(after.folders[0]->breakdown));
    const auto& report = after.folderStorage->at(0);
    EXPECT_EQ(report.directFileSizes.object(), before.folders[0]->directFileSizes.object());
    const auto& child = *report.children.records[0];
    const auto& earlier = *before.folderStorage->at(0).children.records[0];
    EXPECT_NE(child, earlier);
    EXPECT_TRUE(child.item.sameObject(earlier.item));
    EXPECT_EQ(child.measuredItem.object(), earlier.measuredItem.object());
    EXPECT_EQ(child.breakdown.object(), earlier.breakdown.object());
}

TEST(Journal, KeepsFileNamesInTheNewestTwoAndInNamedSnapshots) {
    Journal journal;
    // As in earlier releases, every snapshot has the names.
    journal.snapshots = test::shared(withFiles(1, 3), withFiles(2, 3), withFiles(3, 3));
    journal.baselines = {Baseline::named("Mine", journal.snapshots[0])};
    journal.append(Shared(withFiles(4, 3)), true);
    std::string names;
    for (const auto& snapshot : journal.snapshots)
        names += fileNames(*snapshot) + " ";
    EXPECT_EQ(names, "-- -- 33 33 ");
    EXPECT_EQ(fileNames(*journal.baselines[0].snapshot), "33");

    // Dropped names don't count as changes.
    EXPECT_TRUE(Journal::eventsBetween(*journal.snapshots[0], *journal.snapshots[3]).empty());
    EXPECT_TRUE(Journal::eventsBetween(*journal.snapshots[3], *journal.snapshots[0]).empty());
    const auto nodeOf = [&](std::size_t snapshot) {
        return FolderInspectionNode::recorded("/home", *journal.snapshots[snapshot]);
    };
    const auto before = nodeOf(0);
    const auto after = nodeOf(3);
    for (const auto& row : FolderInspection::rows(&before, &after)) {
        EXPECT_EQ(row.beforeBytes, row.afterBytes) << row.name;
        for (const auto& file : FolderInspection::rows(&*row.before, &*row.after))
            EXPECT_EQ(file.beforeBytes.has_value(), file.name == "x") << file.name;
    }
}

TEST(Journal, KeepsUpTo2000FileNamesInAnEvent) {
    for (const int count : {2'000, 2'001}) {
        Journal journal;
        journal.append(Shared(withFiles(1, 3)), true);
        journal.append(Shared(withFiles(2, count)), true);
        ASSERT_EQ(journal.events.size(), 1U);
        const auto& moved = std::get<change::FolderSizeChanged>(journal.events[0]->changes.at(0));
        const bool kept = count == 2'000;
        EXPECT_EQ(moved.before->directFileSizes.has_value(), kept);
        EXPECT_EQ(moved.after->directFileSizes.has_value(), kept);
        EXPECT_EQ(moved.after->bytes, 1'000'000LL * count + 5);
        EXPECT_TRUE(journal.snapshots[1]->folders[0]->directFileSizes);
    }
}

TEST(Journal, KeepsThe720LatestSnapshots) {
    Journal journal;
    journal.baselines = {Baseline::named("Mine", Shared(test::snapshot(1)))};
    for (unsigned number = 1; number <= 720; ++number)
        journal.append(Shared(test::snapshot(number)), true);
    ASSERT_EQ(journal.snapshots.size(), 720U);
    EXPECT_EQ(journal.snapshots.front()->id, test::snapshot(1).id);
    journal.append(Shared(test::snapshot(721)), true);
    ASSERT_EQ(journal.snapshots.size(), 720U);
    EXPECT_EQ(journal.snapshots.front()->id, test::snapshot(2).id);
    EXPECT_EQ(journal.snapshots.back()->id, test::snapshot(721).id);
    EXPECT_EQ(journal.baselines.size(), 1U);
}

TEST(Journal, KeepsThe10000LastEvents) {
    const auto filled = [](int count) {
        Journal journal;
        journal.snapshots = test::shared(test::snapshot(1));
        for (int i = 0; i < count; ++i)
            journal.events.push_back(eventAt(1000 - i));
        return journal;
    };
    Journal journal = filled(9'999);
    journal.append(Shared(withApplications(2, 1)), true);
    EXPECT_EQ(journal.events.size(), 10'000U);
    EXPECT_FALSE(journal.eventsPrunedThrough);
    journal.append(Shared(withApplications(3, 0)), true);
    EXPECT_EQ(journal.events.size(), 10'000U);
    EXPECT_EQ(journal.eventsPrunedThrough, Date{1000});

    journal = filled(9'990);
    // Events are not in order of time, so the latest of the dropped ones is neither the first nor
    // the last.
    journal.events[7] = eventAt(5000);
    journal.append(Shared(withApplications(2, 30)), true);
    ASSERT_EQ(journal.events.size(), 10'000U);
    EXPECT_EQ(journal.events.front(), eventAt(1000 - 20));
    EXPECT_EQ(journal.eventsPrunedThrough, Date{5000});

    journal = filled(10'000);
    journal.eventsPrunedThrough = Date{8000};
    journal.append(Shared(withApplications(2, 1)), true);
    EXPECT_EQ(journal.eventsPrunedThrough, Date{8000});
}

TEST(Journal, MergesInstallations) {
    Journal journal;
    EXPECT_EQ(journal.importInstallations({}), 0U);
    ASSERT_TRUE(journal.importedInstallations) << "an empty list is stored as well";
    EXPECT_EQ(
        journal.importInstallations({installed("C", 3), installed("A", 1), installed("C", 3)}), 2U);
    InstallationRecord again = installed("A", 1);
    again.importedAt = Date{99};
    EXPECT_EQ(journal.importInstallations({again, installed("B", 2)}), 1U);
    EXPECT_EQ(namesOf(journal), "ABC");
    EXPECT_EQ(journal.importedInstallations->front().importedAt, Date{9})
        << "the known record is kept";

    std::ranges::reverse(*journal.importedInstallations);
    EXPECT_EQ(journal.importInstallations({installed("B", 2)}), 0U);
    EXPECT_EQ(namesOf(journal), "ABC");

    // Records of the same time are sorted by id.
    const bool xFirst = installed("X", 5).id() < installed("Y", 5).id();
    journal.importInstallations({installed("Y", 5), installed("X", 5)});
    EXPECT_EQ(namesOf(journal), xFirst ? "ABCXY" : "ABCYX");

    const auto events = journal.installationEvents();
    ASSERT_EQ(events.size(), 5U);
    EXPECT_EQ(events[0]->id, installed("A", 1).id());
    EXPECT_TRUE(journal.events.empty());
    EXPECT_TRUE(Journal().installationEvents().empty());
}
