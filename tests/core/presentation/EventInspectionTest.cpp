#include "core/presentation/EventInspection.h"

#include "core/activity/ActivityEventBuilder.h"
#include "core/history/InstallationHistory.h"
#include "core/memory/MemoryEvents.h"
#include "core/timeline/EventBuilder.h"
#include "core/timeline/ObservationCoverage.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::application;

namespace {

/// The rows and changes, a line each, without the row for the time of the event.
std::string rowsOf(const EventInspection& inspection) {
    std::string text;
    for (const auto& section : inspection.sections) {
        for (const auto& row : section.rows)
            if (row.label != "Observation interval" && row.label != "Recorded at")
                text += row.label + ": " + row.value + "\n";
        for (const auto& change : section.changes)
            text += change.subject + (change.growth ? " " + signedBytes(*change.growth) : "") + ": "
                    + change.before + " → " + change.after + "\n";
    }
    return text;
}

/// What is marked as a name, with a comma after each.
std::string namesIn(const EventInspection& inspection) {
    std::string names;
    for (const auto& section : inspection.sections) {
        for (const auto& row : section.rows)
            names += row.isNamed ? row.value + "," : "";
        for (const auto& change : section.changes)
            names += change.isNamed ? change.subject + "," : "";
    }
    return names;
}

EventInspection inspected(const Event& event, const Snapshot* latest = nullptr) {
    return EventInspection::of(event, latest, false, Calendar("UTC"));
}

bool hasSentence(const EventInspection& inspection, std::string_view start) {
    for (const auto& section : inspection.sections)
        for (const auto& sentence : section.sentences)
            if (sentence.starts_with(start))
                return true;
    return false;
}

Event filledActivity(SystemActivity::Kind kind, const std::function<void(SystemActivity&)>& fill) {
    auto activity = SystemActivity::observed(kind, Date{600});
    fill(activity);
    return ActivityEventBuilder::event(Shared(std::move(activity)));
}

StorageMeasurementRecord measured(const Application& app, std::optional<std::int64_t> bytes,
                                  const Application& when) {
    StorageMeasurementRecord record;
    record.item.emplace(StorageMeasurementItem::application(app));
    record.measuredItem.emplace(StorageMeasurementItem::application(when));
    record.bytes = bytes;
    record.measuredAt = Date{60};
    return record;
}

} // namespace

TEST(EventInspection, ShowsTheRowsOfEachActivity) {
    using enum SystemActivity::Kind;
    using State = NetworkConnectionState;
    const BatteryObservation full{false, 80, {}, {}};
    const BatteryObservation less{true, {}, {}, {}};
    const struct {
        SystemActivity::Kind kind;
        std::function<void(SystemActivity&)> fill;
        const char* rows;
    } cases[] = {
        {woke,
         [&](SystemActivity& made) {
             made.observedSession = ObservedSession{Date{0}, Date{7'500}, full, less};
             made.powerObservation = less;
         },
         "Observed sleep interval: 2 hr 5 min\nBattery across interval: 80% → Not reported\n"
         "Battery: Not reported\nExternal power: Connected\n"},
        {lowPowerModeChanged, [](SystemActivity& made) { made.lowPowerModeEnabled = false; },
         "Low Power Mode: Disabled\n"},
        {networkChanged,
         [](SystemActivity& made) {
             made.networkChange.emplace(
                 {State::make(State::Availability::unavailable, {}),
                  State::make(State::Availability::available, {State::Interface::wifi}, true)});
         },
         "Previous connection: Unavailable\nObserved connection: Wi-Fi\n"
         "Low Data Mode: Not reported\nConnection cost flag: Expensive\n"},
        {wifiChanged,
         [](SystemActivity& made) {
             made.wifiConnected = false;
             WiFiContext network;
             network.channel = 36;
             network.linkRateMbps = 866.7;
             made.wifiContext.emplace(std::move(network));
         },
         "Last connected network: Not reported\nChannel: 36\nSecurity Mode: Not reported\n"
         "Signal at observation: Not reported\n"
         "Link rate at observation: 866.7 Mbps · not internet speed\n"},
        {displayChanged,
         [](SystemActivity& made) {
             const DisplayContext display{20, 10, 10, 5, 2, 59.94, true};
             DisplayContext before = display;
             before.scale = 1;
             EnvironmentActivity screen;
             screen.deviceName = "Screen";
             screen.display = display;
             screen.previousDisplay = before;
             made.environmentActivity.emplace(std::move(screen));
         },
         "Observed item: Screen\nDisplay type: Built-in\n"
         "Display mode: 20 × 10 pixels · 10 × 5 points\n"
         "Previous display mode: 20 × 10 pixels · 10 × 5 points\n"
         "Reported refresh rate: 59.94 Hz\nDisplay scale: 1× → 2×\n"},
        {thermalChanged,
         [](SystemActivity& made) {
             EnvironmentActivity heat;
             heat.elevatedSince = Date{0};
             made.environmentActivity.emplace(std::move(heat));
         },
         "Observed elevated pressure: 10 min · since 1 Jan 2001, 00:00:00\n"},
    };
    for (const auto& [kind, fill, rows] : cases) {
        const Event event = filledActivity(kind, fill);
        const std::string shown = rowsOf(inspected(event));
        EXPECT_EQ(shown.substr(0, shown.find("Source: ")), rows) << event.title;
    }
}

TEST(EventInspection, ShowsTheSizeOfAnApplicationOnlyWithItsVersion) {
    const Application old = application("Pen", "1");
    const Application now = application("Pen", "2");
    Event event;
    event.category = EventCategory::applications;
    change::ApplicationUpdated updated;
    updated.before.emplace(Application(old));
    updated.after.emplace(Application(now));
    event.changes.emplace_back(std::move(updated));
    event.applicationSizeBefore.emplace(measured(old, 1'000'000, old));
    event.applicationSizeAfter.emplace(measured(now, 1'000'000, old));
    Snapshot latest = test::snapshot(3);
    latest.applicationStorage.emplace().records = test::shared(measured(now, 3'000'000, now));
    const auto early = inspected(event, &latest);
    EXPECT_TRUE(hasSentence(early, "The event-time size measurement did not yet match"));
    EXPECT_NE(rowsOf(early).find("Latest observation: Absent at last observation\n"
                                 "Event-time bundle size: Unavailable"),
              std::string::npos);
    EXPECT_NE(rowsOf(early).find("Last measured bundle size: 3 MB\n"
                                 "Size measured: 1 Jan 2001, 00:01:00\n"
                                 "Size measured for version: 2\nPen: 1 → 2\n"),
              std::string::npos)
        << rowsOf(early);

    event.applicationSizeAfter.emplace(measured(now, 3'000'000, now));
    latest.coverage.excludedPaths.emplace(std::set<std::string>{"/Applications"});
    const auto later = inspected(event, &latest);
    EXPECT_NE(rowsOf(later).find("Latest observation: Unknown · location was not fully observed.\n"
                                 "Event-time bundle size: 3 MB\n"
                                 "Recorded bundle-size change: +2 MB\n"),
              std::string::npos)
        << rowsOf(later);
    EXPECT_FALSE(hasSentence(later, "The event-time size measurement"));
}

TEST(EventInspection, ShowsTheTextOfAClipAndWhatCanBeDoneWithIt) {
    auto clip =
        MemoryRecord::make(MemoryRecord::Kind::clipboard, Date{}, "a b", {}, {}, {}, Date{});
    clip.text = "a\nb";
    const auto made = inspected(MemoryEvents::event(Shared(MemoryRecord(clip))));
    EXPECT_NE(rowsOf(made).find("Text: a\nb\n"), std::string::npos) << rowsOf(made);
    ASSERT_EQ(made.actions.size(), 2);
    EXPECT_EQ(made.actions[0].command, InspectionCommand::copyClip);
    EXPECT_EQ(made.actions[1].label, "Pin");
    clip.text = clip.title;
    clip.pinned = true;
    const auto pinned = inspected(MemoryEvents::event(Shared(MemoryRecord(clip))));
    EXPECT_EQ(rowsOf(pinned).find("Text: "), std::string::npos) << "the title has all of it";
    EXPECT_EQ(pinned.actions[1].label, "Unpin");
}

TEST(EventInspection, ShowsWhichPartsOfAFolderChanged) {
    const auto inspectedFolder = [](FolderSize was, FolderSize is) {
        Snapshot before = test::snapshot(1);
        Snapshot after = test::snapshot(2);
        before.folders = test::shared(std::move(was));
        after.folders = test::shared(std::move(is));
        return inspected(EventBuilder::build(before, after).at(0), &after);
    };
    const auto known = inspectedFolder(
        test::folder("/r", 1'000'000'000, {{"a", 1'000'000'000}}),
        test::folder("/r", 3'500'000'000, {{"a", 1'000'000'000}, {"b", 2'000'000'000}}));
    EXPECT_EQ(rowsOf(known),
              "Folder path: /r\nLatest observation: Present at last observation\n"
              "b +2 GB: Zero KB → 2 GB\nNet change: +500 MB\n"
              "Size recorded: Date not recorded → Date not recorded\nr: 1 GB → 3.5 GB\n");
    EXPECT_EQ(namesIn(known), "/r,b,r,");
    ASSERT_EQ(known.actions.size(), 1);
    EXPECT_EQ(known.actions.front().command, InspectionCommand::inspectFolderSizes);
    const auto unknown = inspectedFolder(test::folder("/r", 1'000'000'000),
                                         test::folder("/r", 3'500'000'000, {{"a", 3'500'000'000}}));
    EXPECT_TRUE(hasSentence(unknown, "A comparable breakdown wasn’t recorded"));
    EXPECT_FALSE(hasSentence(unknown, "The remaining net change"));
}

TEST(EventInspection, ShowsNoValueOfAConfigurationAndNamesChangedSettings) {
    Event event;
    event.category = EventCategory::background;
    change::BackgroundChanged changed;
    using Keys = std::map<std::string, std::string>;
    BackgroundItem item = test::agent("org.example.job");
    item.definitionFingerprints = Keys{{"Program", "a"}, {"RunAtLoad", "b"}};
    item.safeSettings = Keys{{"RunAtLoad", "true"}};
    changed.before.emplace(BackgroundItem(item));
    item.definitionFingerprints = Keys{{"Program", "c"}, {"RunAtLoad", "d"}};
    item.safeSettings = Keys{{"RunAtLoad", "false"}};
    changed.after.emplace(std::move(item));
    event.changes.emplace_back(std::move(changed));
    EXPECT_NE(rowsOf(inspected(event)).find("Changed settings: Program, RunAtLoad\n"),
              std::string::npos);
    EXPECT_NE(rowsOf(inspected(event)).find("RunAtLoad: true → false\n"), std::string::npos);

    change::MetadataChanged file;
    file.after.emplace(test::metadata(ObservedMetadata::Kind::configuration, "/etc/a", "digest"));
    event.changes.front() = std::move(file);
    EXPECT_EQ(rowsOf(inspected(event)), "Selected file: /etc/a\nFile size: Not reported\n");
}

TEST(EventInspection, LabelsTheTimeByKindOfEvent) {
    const auto first = [](const Event& event, bool isStateComparison) {
        const auto made = EventInspection::of(event, nullptr, isStateComparison, Calendar("UTC"));
        const auto& section = made.sections.front();
        return section.heading + "|" + section.rows.front().label + "|"
               + section.rows.front().value;
    };
    Event interval;
    interval.timestamp = Date{60};
    Event point = interval;
    point.intervalStart = point.timestamp;
    const std::string both = "1 Jan 2001, 00:00:00 – 00:01:00";
    EXPECT_EQ(first(interval, false), "|Observation interval|" + both);
    EXPECT_EQ(first(interval, true), "STATE DIFFERENCE|Compared snapshots|" + both);
    EXPECT_EQ(first(point, false), "|Recorded at|1 Jan 2001, 00:01:00");
    EXPECT_EQ(first(point, true), "STATE DIFFERENCE|Compared at|1 Jan 2001, 00:01:00");
    Event gap = interval;
    gap.observationGap = ObservationGap{Date{0}, Date{60}, false};
    EXPECT_EQ(first(gap, false), "Recording coverage|Last capture before gap|1 Jan 2001, 00:00:00");
    const auto imported =
        inspected(InstallationHistory::event({"Pen", "1", Date{0}, "", Date{60}}));
    EXPECT_NE(rowsOf(imported).find("Recorded installation date: 1 Jan 2001, 00:00:00\n"
                                    "Imported into Tidemark: 1 Jan 2001, 00:01:00\n"
                                    "Installer source: Not recorded\n"),
              std::string::npos);
}
