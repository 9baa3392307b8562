#include "core/presentation/HistoryView.h"

#include "tests/support/HistoryEvents.h"
#include "tests/support/SharedRecords.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::activityEvent;
using test::event;
using test::ids;
using test::memoryEvent;

namespace {

using enum WorkspaceDestination;
using Kind = MemoryRecord::Kind;
using Activity = SystemActivity::Kind;

constexpr double day = 86'400;
constexpr Date now{100 * day};

/// Events for every place, a second apart, and three older ones.
const MergedHistory& history() {
    static const MergedHistory merged = MergedHistory::of(test::shared(
        event("old-app", 50 * day), memoryEvent("old-clip", 50 * day, Kind::clipboard),
        event("week", 93 * day), event("app", 99.5 * day),
        event("agent", 99.5 * day - 1, EventCategory::background),
        event("folder", 99.5 * day - 2, EventCategory::storage),
        activityEvent("slept", 99.5 * day - 3, Activity::sleepRequested),
        activityEvent("drive", 99.5 * day - 4, Activity::volumeChanged),
        activityEvent("mouse", 99.5 * day - 5, Activity::bluetoothChanged,
                      EventCategory::networking),
        activityEvent("wifi", 99.5 * day - 6, Activity::wifiChanged, EventCategory::networking),
        memoryEvent("launch", 99.5 * day - 7, Kind::appLaunched),
        memoryEvent("usage", 99.5 * day - 8, Kind::appUsage),
        memoryEvent("open", 99.5 * day - 9, Kind::fileOpened, "/a"),
        memoryEvent("open-again", 99.5 * day - 10, Kind::fileModified, "/a"),
        memoryEvent("nowhere", 99.5 * day - 11, Kind::fileCreated),
        memoryEvent("got", 99.5 * day - 12, Kind::downloaded, "/b"),
        memoryEvent("got-again", 99.5 * day - 13, Kind::downloaded, "/b"),
        memoryEvent("clip", 99.5 * day - 14, Kind::clipboard, {}, "Secret text"),
        memoryEvent("same-clip", 99.5 * day - 15, Kind::clipboard, {}, "Secret text")));
    return merged;
}

HistoryView at(const HistoryPlace& place) {
    return presentHistory(history(), place, now, Calendar("UTC"));
}
std::string shown(const HistoryPlace& place) {
    return ids(at(place).presentation.events);
}
std::string counted(const HistoryPlace& place) {
    std::string text;
    for (const auto& [destination, count] : at(place).sidebarCounts)
        text += std::string(rawValue(destination)) + " " + std::to_string(count) + " ";
    return text;
}

} // namespace

TEST(WorkspaceDestination, ShowsItsEvents) {
    const std::pair<WorkspaceDestination, const char*> cases[] = {
        {timeline, "app agent folder slept drive mouse wifi launch"},
        {applications, "app launch"},
        {storage, "folder"},
        {folderSizes, "folder"},
        {background, "agent"},
        {macActivity, "slept"},
        {devices, "drive mouse"},
        {network, "mouse wifi"},
        {files, "open nowhere got"},
        {downloads, "got"},
        {clipboard, "clip same-clip"},
        {snapshots, "app agent folder slept drive mouse wifi launch"},
    };
    for (const auto& [workspace, events] : cases)
        EXPECT_EQ(shown({.workspace = workspace}), events) << rawValue(workspace);
    EXPECT_EQ(shown({.workspace = files, .systemFilters = {devices, storage}}),
              "folder drive mouse");
    EXPECT_EQ(shown({.workspace = timeline, .categoryFilters = {EventCategory::storage}}),
              "folder");
    EXPECT_EQ(shown({.workspace = timeline,
                     .categoryFilters = {EventCategory::downloads, EventCategory::storage}}),
              "folder got got-again");
    EXPECT_EQ(shown({.workspace = files, .categoryFilters = {EventCategory::files}}),
              "open nowhere got");
    EXPECT_EQ(shown({.workspace = files, .categoryFilters = {EventCategory::downloads}}), "got");
    EXPECT_EQ(shown({.workspace = clipboard, .search = "no such thing"}), "");
    EXPECT_EQ(shown({.systemFilters = {devices}, .categoryFilters = {EventCategory::networking}}),
              "mouse");
    for (const auto& found : history().events)
        EXPECT_TRUE(includes(homeOf(*found), *found)) << found->id;
    for (std::size_t i = 0; i < history().events.size(); ++i)
        EXPECT_TRUE(includes(snapshots, *history().events[i]));
}

TEST(HistoryView, CountsEveryPlaceIndependentOfTheFilters) {
    const auto* all = "timeline 8 files 3 downloads 1 clipboard 2 applications 2 storage 1 "
                      "background 1 macActivity 1 devices 2 network 2 ";
    for (const HistoryPlace& place :
         {HistoryPlace{}, HistoryPlace{.workspace = devices, .systemFilters = {devices}},
          HistoryPlace{.categoryFilters = {EventCategory::storage}}})
        EXPECT_EQ(counted(place), all);
    EXPECT_EQ(counted({.window = HistoryTimeWindow::all})
                  .find("timeline 10 files 3 downloads 1 "
                        "clipboard 3 "),
              0U);
    EXPECT_EQ(counted({.search = "no such thing"}),
              "timeline 0 files 0 downloads 0 clipboard 0 applications 0 storage 0 background 0 "
              "macActivity 0 devices 0 network 0 ");
    EXPECT_EQ(counted({.search = "SECRET"}).find("timeline 0 files 0 downloads 0 clipboard 2"), 0U);
    EXPECT_EQ(shown({.search = "wI"}), "wifi");
}

TEST(HistoryView, IncludesTheRightEventsAtTheEdgesOfTheWindow) {
    EXPECT_EQ(shown({.window = HistoryTimeWindow::custom, .customWindowDays = 7, .search = "week"}),
              "")
        << "an event exactly at the cutoff is outside";
    EXPECT_EQ(shown({.window = HistoryTimeWindow::custom, .customWindowDays = 8, .search = "week"}),
              "week");
    const auto clips =
        MergedHistory::of(test::shared(memoryEvent("edge", 93 * day, Kind::clipboard)));
    EXPECT_EQ(presentHistory(clips, {}, now, Calendar("UTC")).sidebarCounts.at(clipboard), 1U)
        << "the memory counts include it";
}

TEST(HistoryView, IgnoresTheWindowForAnOpenSnapshotExceptInMemoryCounts) {
    HistoryPlace place{.workspace = devices, .isInSnapshot = true, .since = Date{49 * day}};
    EXPECT_EQ(shown(place), ids(history().timeline));
    EXPECT_EQ(counted(place).find("timeline 10 files 3 downloads 1 clipboard 2"), 0U);
    place.since = Date{99.5 * day - 3};
    EXPECT_EQ(shown(place), "app agent folder");

    place.stateComparison =
        test::shared(event("gone", 1), event("grown", 0, EventCategory::storage));
    EXPECT_EQ(shown(place), "gone grown");
    EXPECT_EQ(counted(place).find("timeline 2 files 3 downloads 1 clipboard 2 applications 1"), 0U);
    place.systemFilters = {storage};
    EXPECT_EQ(shown(place), "grown");
}
