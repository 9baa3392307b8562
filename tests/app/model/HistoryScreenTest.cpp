#include "app/model/HistoryScreen.h"

#include "tests/app/support/ModelFixture.h"
#include "tests/support/HistoryEvents.h"
#include "tests/support/SharedRecords.h"

using namespace tidemark;
using test::event;
using test::ids;
using test::memoryEvent;
using Place = WorkspaceDestination;

struct HistoryScreenTest : test::ModelFixture {
    HistoryScreen& screen() { return model->history(); }
    std::string shown() { return ids(screen().presentation().events); }
    double ago(double days) { return (clock.now() + -days * 86'400).secondsSince2001; }

    /// A journal with three events and two named snapshots: one of two days ago and one of the
    /// latest state.
    Journal history() {
        Journal journal;
        Snapshot old = test::snapshot(1);
        old.timestamp = Date{ago(2)};
        Snapshot latest = test::snapshot(2);
        latest.timestamp = clock.now();
        latest.applications.emplace(test::shared(test::application("Lantern")));
        journal.snapshots = test::shared(old, latest);
        journal.events = test::shared(event("ancient", ago(100)), event("app", ago(3)),
                                      event("folder", ago(1), EventCategory::storage));
        journal.baselines = {Baseline::named("Old", journal.snapshots[0]),
                             Baseline::named("New", journal.snapshots[1])};
        return journal;
    }
    void load() { take(history()); }
    void take(Journal journal) {
        state().setJournal(std::move(journal));
        test::settle();
    }
    Uuid baseline(std::size_t index) { return state().journal()->baselines.at(index).id; }
    /// Sets the memory history to the records of these events.
    void remember(const std::vector<Event>& events) {
        MemoryArchive archive;
        for (const auto& each : events)
            archive.records.push_back(each.memory.value());
        screen().setMemory(archive);
    }
    std::string compared() {
        test::until([&] { return !screen().isComparing(); });
        return shown();
    }
    /// Calls `change`, handles the events, and returns how often the screen announced a change.
    int announced(const std::function<void()>& change) {
        int changes = 0;
        const auto counting = QObject::connect(&screen(), &Observable::changed, [&] { ++changes; });
        change();
        test::settle();
        QObject::disconnect(counting);
        return changes;
    }
};

TEST_F(HistoryScreenTest, MergesAllSources) {
    load();
    const auto before = screen().historyRevision();
    SystemActivity woke;
    woke.timestamp = Date{ago(0.5)};
    woke.kind = SystemActivity::Kind::woke;
    state().setSystemActivity(test::shared(std::move(woke)));
    test::settle();
    remember({memoryEvent("launch", ago(2), MemoryRecord::Kind::appLaunched),
              memoryEvent("clip", ago(1.5), MemoryRecord::Kind::clipboard),
              memoryEvent("usage", ago(1), MemoryRecord::Kind::appUsage)});
    Journal journal = *state().journal();
    InstallationRecord tool;
    tool.name = "Tool";
    tool.recordedAt = Date{ago(4)};
    journal.importInstallations({tool});
    take(std::move(journal));
    EXPECT_EQ(screen().historyRevision(), before + 3);
    EXPECT_EQ(screen().history()->full.size(), 8U);
    EXPECT_EQ(screen().history()->events.size(), 7U);
    EXPECT_EQ(screen().history()->timeline.size(), 6U);
    EXPECT_EQ(screen().presentation().events.size(), 5U) << "the ancient one is too old";
    EXPECT_TRUE(screen().history()->full.back().sameObject(state().journal()->events.front()))
        << "texts are not copied";
}

TEST_F(HistoryScreenTest, MergesNothingInAProgramWithoutWindows) {
    showsHistory = false;
    create();
    EXPECT_EQ(announced([&] {
                  load();
                  remember({memoryEvent("launch", ago(2), MemoryRecord::Kind::appLaunched)});
              }),
              0);
    screen().openSnapshot(baseline(0));
    screen().showImported();
    EXPECT_EQ(screen().historyRevision(), 0U);
    EXPECT_EQ(shown(), "");
}

TEST_F(HistoryScreenTest, TheSelectedEventIsReplacedByItsNewVersion) {
    const auto opened = [](const char* id, const char* path) {
        return memoryEvent(id, 1, MemoryRecord::Kind::fileOpened, path);
    };
    remember({opened("a", "/old")});
    screen().setSelected(screen().history()->full.front());
    remember({opened("a", "/new")});
    EXPECT_EQ(screen().selection().event()->path, "/new");
    EXPECT_EQ(screen().history()->full.size(), 1U);
    remember({opened("b", "/other")});
    EXPECT_EQ(screen().selection().event()->path, "/new") << "a removed event stays selected";
}

TEST_F(HistoryScreenTest, StoresTheTimeWindowAndClearsASelectionOutsideOfIt) {
    load();
    EXPECT_EQ(shown(), "folder app");
    screen().setSelected(screen().presentation().events.back());
    test::settle();
    EXPECT_EQ(announced([&] { screen().setRange("threeDays"); }), 1);
    EXPECT_EQ(shown(), "folder");
    EXPECT_FALSE(screen().selection().event());
    screen().setRange("all");
    EXPECT_EQ(shown(), "folder app ancient");
    const auto refreshes = screen().presentationRevision();
    screen().setRange("all");
    screen().setSearch("");
    screen().setCustomWindowDays(2);
    EXPECT_EQ(screen().presentationRevision(), refreshes) << "nothing shown has changed";
    screen().setRange("custom");
    EXPECT_EQ(shown(), "folder");
    screen().setSelected(screen().presentation().events.front());
    test::settle();
    EXPECT_EQ(announced([&] { screen().setCustomWindowDays(0); }), 1);
    EXPECT_EQ(shown(), "") << "the event is exactly one day old";
    EXPECT_FALSE(screen().selection().event());
    EXPECT_EQ(screen().place().timeWindowOptions().at(4).label, "Custom: 0 days");
    EXPECT_EQ(preferences.text("historyTimeWindow"), "custom");
    screen().setCustomWindowDays(1000);
    restart();
    EXPECT_EQ(screen().place().range(), "custom");
    EXPECT_EQ(screen().place().customWindowDays(), 365);
    preferences.set("historyTimeWindow", std::string("decade"));
    restart();
    EXPECT_EQ(screen().place().range(), "week");
    screen().setRange("decade");
    EXPECT_EQ(screen().place().timeWindowCutoff(clock.now()), Date::distantPast());
}

TEST_F(HistoryScreenTest, FollowsChangesOfTheSettings) {
    load();
    preferences.set("historyTimeWindow", std::string("all"));
    preferences.set("historyCustomWindowDays", std::int64_t{9});
    test::settle();
    EXPECT_EQ(shown(), "folder app ancient");
    EXPECT_EQ(screen().place().customWindowDays(), 9);
    screen().setRange("decade");
    screen().setCustomWindowDays(0);
    test::settle();
    EXPECT_EQ(screen().place().range() + std::to_string(screen().place().customWindowDays()),
              "decade0")
        << "values that are set on the screen itself are kept, also those that are not allowed";
}

TEST_F(HistoryScreenTest, NavigationAndFiltersDetermineThePlace) {
    load();
    screen().setRange("all");
    screen().setSearch("app");
    screen().navigate(Place::storage, false);
    EXPECT_EQ(shown(), "");
    screen().navigate(Place::storage, true);
    EXPECT_EQ(shown(), "folder");
    EXPECT_EQ(screen().place().systemFilters(), std::set{Place::storage});
    EXPECT_EQ(screen().place().destination(),
              SidebarDestination(sidebarDestination::Category{EventCategory::storage}));
    EXPECT_EQ(screen().sidebarCounts().at(Place::timeline), 3U);
    EXPECT_FALSE(screen().sidebarCounts().contains(Place::folderSizes));

    // The place itself becomes a filter, and the new filter is added to it.
    screen().toggleSystemFilter(Place::applications);
    EXPECT_EQ(screen().place().workspace(), Place::timeline);
    EXPECT_EQ(shown(), "folder app ancient");
    screen().toggleSystemFilter(Place::storage);
    EXPECT_EQ(screen().place().workspace(), Place::applications);
    EXPECT_EQ(shown(), "app ancient");
    screen().setSearch("anc");
    screen().toggleSystemFilter(Place::applications);
    EXPECT_EQ(screen().place().workspace(), Place::timeline);
    EXPECT_TRUE(screen().place().systemFilters().empty());
    EXPECT_EQ(shown(), "ancient") << "the search stays";
    screen().toggleSystemFilter(Place::folderSizes);
    EXPECT_EQ(screen().place().workspace(), Place::folderSizes);
    EXPECT_EQ(shown(), "folder");

    screen().setSelected(screen().history()->full.front());
    screen().setNavigation(
        sidebarDestination::Categories{{EventCategory::applications, EventCategory::storage}});
    EXPECT_EQ(screen().place().categoryFilters().size(), 2U);
    EXPECT_FALSE(screen().selection().event());
}

TEST_F(HistoryScreenTest, MemoryPlacesShowAndExportTheirEventsOfAnyAge) {
    using Kind = MemoryRecord::Kind;
    remember({memoryEvent("old", ago(5), Kind::fileOpened, "/old"),
              memoryEvent("file", ago(0.5), Kind::fileOpened, "/file"),
              memoryEvent("got", ago(0.5), Kind::downloaded, "/got"),
              memoryEvent("clip", ago(0.5), Kind::clipboard)});
    EXPECT_EQ(screen().sidebarCounts().at(Place::files), 3U) << "also counted at another place";
    const std::pair<Place, const char*> cases[] = {
        {Place::files, "memory-file memory-got memory-old"},
        {Place::downloads, "memory-got"},
        {Place::clipboard, "memory-clip"}};
    for (const auto& [place, listed] : cases) {
        screen().setRange("all");
        screen().navigate(place, true);
        EXPECT_EQ(shown(), listed);
        screen().setSelected(screen().presentation().events.front());
        screen().setRange("day");
        EXPECT_TRUE(screen().selection().event()) << "the event is still listed";
        screen().beginExport();
        ASSERT_TRUE(screen().exportReport());
        EXPECT_EQ(ids(screen().exportReport()->events), shown());
        screen().endExport();
    }
}

TEST_F(HistoryScreenTest, OpensThePlaceOfAnEvent) {
    load();
    remember({memoryEvent("clip", ago(90), MemoryRecord::Kind::clipboard)});
    screen().setSearch("nothing");
    screen().navigate(Place::storage, false);
    const Uuid scroll = screen().selection().scrollRequest();
    int changes = 0;
    QObject::connect(&screen(), &Observable::changed, [&] { ++changes; });
    screen().openEvent(screen().history()->full.back());
    EXPECT_EQ(changes, 0) << "announced later, from the event loop";
    test::settle();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(screen().place().workspace(), Place::timeline);
    EXPECT_EQ(screen().selection().event()->id, "ancient");
    EXPECT_EQ(shown(), "folder app ancient");
    EXPECT_NE(screen().selection().scrollRequest(), scroll);
    EXPECT_EQ(preferences.text("historyTimeWindow"), "all");
    screen().openEvent(Shared(memoryEvent("clip", ago(90), MemoryRecord::Kind::clipboard)));
    EXPECT_EQ(screen().place().workspace(), Place::clipboard);
    EXPECT_EQ(screen().selection().event()->id, "clip");
}

TEST_F(HistoryScreenTest, ComparesStatesInTheBackground) {
    load();
    screen().setSelected(screen().history()->full.front());
    screen().openSnapshot(baseline(0));
    screen().setSnapshotViewMode(SnapshotViewMode::states);
    EXPECT_TRUE(screen().isComparing());
    EXPECT_EQ(shown(), "");
    screen().endExport();
    screen().beginExport();
    EXPECT_FALSE(screen().exportReport());
    const auto requested = screen().presentationRevision();
    const auto compare = [&] { EXPECT_TRUE(compared().ends_with("-0")) << shown(); };
    EXPECT_EQ(announced(compare), 2) << "the request and its result";
    EXPECT_EQ(screen().presentationRevision(), requested + 1) << "the shown events have changed";
    EXPECT_EQ(screen().sidebarCounts().at(Place::applications), 1U);
    screen().beginExport();
    EXPECT_EQ(screen().exportReport()->mode, "Compare States");

    // Each named snapshot keeps its mode, and the result of its comparison is used again until
    // there is a new capture.
    screen().setSnapshotViewMode(SnapshotViewMode::timeline);
    EXPECT_EQ(shown(), "folder");
    screen().setSnapshotViewMode(SnapshotViewMode::states);
    EXPECT_FALSE(screen().isComparing());
    screen().openSnapshot(baseline(1));
    EXPECT_EQ(screen().place().viewMode(), SnapshotViewMode::timeline);
    screen().setSnapshotViewMode(SnapshotViewMode::states);
    EXPECT_EQ(compared(), "") << "the snapshot is the latest";
    screen().openSnapshot(baseline(0));
    EXPECT_EQ(screen().place().viewMode(), SnapshotViewMode::states);
    EXPECT_FALSE(screen().isComparing());

    Journal next = *state().journal();
    next.snapshots.push_back(next.snapshots.front());
    state().setJournal(std::move(next));
    test::until([&] { return screen().isComparing(); });
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(compared(), "") << "the application is no longer there";
}

TEST_F(HistoryScreenTest, AnOutdatedComparisonIsDropped) {
    load();
    screen().openSnapshot(baseline(0));
    screen().setSnapshotViewMode(SnapshotViewMode::states);
    ASSERT_TRUE(screen().isComparing());
    screen().navigate(Place::timeline, true);
    EXPECT_FALSE(screen().isComparing());
    test::settle();
    EXPECT_EQ(shown(), "folder app");

    screen().openSnapshot(baseline(0));
    screen().setSnapshotViewMode(SnapshotViewMode::states);
    screen().setSearch("lantern");
    screen().setSearch("nothing");
    EXPECT_EQ(compared(), "");
    screen().setSearch("");
    EXPECT_FALSE(screen().isComparing());
    EXPECT_EQ(screen().presentation().events.size(), 1U);
    screen().setNavigation(sidebarDestination::OfBaseline{baseline(1)});
    screen().setSnapshotViewMode(SnapshotViewMode::states);
    model.reset();
}

TEST_F(HistoryScreenTest, ReportsWhenTheTimelineOfASnapshotMayBeIncomplete) {
    using Case = std::tuple<std::size_t, std::optional<double>, SnapshotViewMode, bool>;
    for (const auto& [events, prunedDaysAgo, mode, incomplete] : std::to_array<Case>({
             {9'999, {}, SnapshotViewMode::timeline, false},
             {10'000, {}, SnapshotViewMode::timeline, true},
             {10'000, 3, SnapshotViewMode::timeline, false},
             {1, 1, SnapshotViewMode::timeline, true},
             {1, 1, SnapshotViewMode::states, false},
         })) {
        load();
        Journal journal = *state().journal();
        journal.events.assign(events, Shared(event("e", ago(1))));
        if (prunedDaysAgo)
            journal.eventsPrunedThrough = Date{ago(*prunedDaysAgo)};
        take(std::move(journal));
        EXPECT_FALSE(screen().hasIncompleteSnapshotHistory());
        screen().openSnapshot(baseline(0));
        screen().setSnapshotViewMode(mode);
        EXPECT_EQ(screen().hasIncompleteSnapshotHistory(), incomplete);
    }
}

TEST_F(HistoryScreenTest, ReportsTheCoverageOfACaptureAtOnce) {
    Journal journal = history();
    Snapshot latest = *journal.snapshots.back();
    latest.timestamp = *state().observationNow + 5;
    latest.coverage.issues = {"Downloads: not read"};
    journal.snapshots.back() = Shared(std::move(latest));
    take(std::move(journal));
    EXPECT_EQ(screen().observationCoverage().accessIssues.size(), 1U);
}
