#include "core/timeline/EventBuilder.h"

#include "core/timeline/EventDisplay.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <functional>

#include <gtest/gtest.h>

using namespace tidemark;
using test::agent;
using test::agentInside;
using test::application;
using test::folder;
using test::metadata;
using test::trash;

namespace {

/// An event as "category importance symbol | title | subtitle | path".
std::string worded(const Event& event) {
    return std::string(rawValue(event.category)) + " " + std::string(rawValue(event.importance))
           + " " + event.symbol + " | " + event.title + " | " + event.subtitle + " | "
           + event.path.value_or("-");
}

std::vector<Event> built(const std::function<void(Snapshot&, Snapshot&)>& arrange) {
    Snapshot before = test::snapshot(1);
    Snapshot after = test::snapshot(2);
    arrange(before, after);
    return EventBuilder::build(before, after);
}

/// The number at the end of each event's id, then the number of its changes.
std::string numbers(const std::vector<Event>& events) {
    std::string text;
    for (const Event& event : events)
        text += event.id.substr(event.id.rfind('-') + 1) + ":"
                + std::to_string(event.changes.size()) + " ";
    return text;
}

StorageMeasurementRecord measured(const Application& app, std::int64_t bytes) {
    StorageMeasurementRecord record;
    record.item.emplace(StorageMeasurementItem::application(app));
    record.measuredItem = record.item;
    record.bytes = bytes;
    return record;
}

} // namespace

TEST(EventBuilder, WordsEachChange) {
    using Arrange = std::function<void(Snapshot&, Snapshot&)>;
    const auto sizes = [](const FolderSize& was, const FolderSize& is) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            before.folders = test::shared(was);
            after.folders = test::shared(is);
        };
    };
    const auto free = [](std::int64_t was, std::int64_t is, bool named) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            before.volumeID = after.volumeID = "V";
            before.freeBytes = was;
            after.freeBytes = is;
            if (named)
                before.volumeContext = VolumeContext{"Disk", {}, {}, {}, {}, {}};
        };
    };
    const auto source = [](ObservedMetadata::Kind kind, const std::string& was,
                           const std::string& is) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            const auto items = [&](const std::string& value) {
                return value.empty() ? std::vector<ObservedMetadata>()
                                     : std::vector{metadata(kind, "/s/jq", value)};
            };
            before.additionalReports = {test::report("/s", items(was))};
            after.additionalReports = {test::report("/s", items(is))};
        };
    };
    using Applications = std::vector<Application>;
    const auto apps = [](const Applications& was, const Applications& is) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            before.applications.emplace(test::shared(was));
            after.applications.emplace(test::shared(is));
        };
    };
    using Items = std::vector<BackgroundItem>;
    const auto items = [](const Items& was, const Items& is,
                          const Applications& owners = {}) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            before.applications.emplace(test::shared(owners));
            after.applications = before.applications;
            before.backgroundItems.emplace(test::shared(was));
            after.backgroundItems.emplace(test::shared(is));
        };
    };
    BackgroundItem daemon = agent("org.sync");
    daemon.kind = BackgroundItem::Kind::daemon;
    daemon.program = "/bin/x";
    FolderSize rolling = trash(1, 1);
    rolling.rollingMeasurement = true;
    const auto movies = [](std::int64_t bytes, std::map<std::string, std::int64_t> parts) {
        return folder("/home/Movies", bytes, std::move(parts));
    };
    constexpr auto giga = 1'000'000'000LL;
    using enum ObservedMetadata::Kind;
    const std::pair<Arrange, const char*> cases[] = {
        {apps({}, {application("A", "2.0")}),
         "Applications prominent plus.app | A Installed | 2.0 | /Applications/A.app"},
        {apps({application("A", "1", "7")}, {application("A", "2", "8")}),
         "Applications prominent arrow.triangle.2.circlepath | A Updated | 1 → 2 | "
         "/Applications/A.app"},
        {apps({application("A", "1", "7")}, {application("A", "1", "8")}),
         "Applications prominent arrow.triangle.2.circlepath | A Updated | Build 7 → 8 | "
         "/Applications/A.app"},
        {items({}, {agent("org.sync")}),
         "Background items prominent gearshape.2 | New Background Item | "
         "LaunchAgent · org.sync | /Library/LaunchAgents/org.sync.plist"},
        {items({}, {agentInside("A")}, {application("A")}),
         "Background items prominent gearshape.2 | A: New Background Item | "
         "LaunchAgent · org.example.A.helper | /Library/LaunchAgents/org.example.A.helper.plist"},
        {items({agent("org.sync")}, {}),
         "Background items routine gearshape.2 | Background Item Removed | "
         "LaunchAgent · org.sync | /Library/LaunchAgents/org.sync.plist"},
        {items({agent("org.sync")}, {daemon}),
         "Background items prominent gearshape.2 | Background Item Changed | "
         "LaunchDaemon · org.sync | /Library/LaunchAgents/org.sync.plist"},
        {[](auto& before, auto& after) {
             before.operatingSystem = {"14.1", "A"};
             after.operatingSystem = {"14.2", {}};
         },
         "Mac Activity prominent desktopcomputer | macOS Changed | 14.1 (A) → 14.2 | -"},
        {sizes(movies(0, {}), movies(2 * giga, {{"b", giga}, {"a", giga}})),
         "Storage prominent folder | Movies Grew in Size | +2 GB · a +1 GB | /home/Movies"},
        {sizes(movies(2 * giga, {}), movies(0, {})),
         "Storage routine folder | Movies Shrank in Size | −2 GB | /home/Movies"},
        {sizes(movies(3 * giga, {{"a", 2 * giga}, {"b", giga}}),
               movies(3 * giga - 1'000'000, {{"a", giga}, {"b", giga}, {"c", giga - 1'000'000}})),
         "Storage prominent folder | Movies Contents Changed | a −1 GB · c +999 MB · Net −1 MB | "
         "/home/Movies"},
        {sizes(trash(500'000'000, 1), trash(0, 0)),
         "Storage prominent trash | Trash Is Now Empty | "
         "Previously 1 items · 500 MB · Observed empty | /home/.Trash"},
        {sizes(rolling, trash(0, 0)),
         "Storage prominent trash | Trash Is Now Empty | "
         "Previously 1 item · Previous size unavailable | /home/.Trash"},
        {free(9 * giga, 2 * giga, true), "Storage prominent internaldrive | Less Space Available | "
                                         "Disk · 7 GB decrease in free space · 2 GB remaining | -"},
        {free(2 * giga, 9 * giga, false), "Storage routine internaldrive | Space Freed Up | "
                                          "7 GB increase in free space · 9 GB remaining | -"},
        {sizes(trash(giga, 1), trash(3 * giga, 2)),
         "Storage prominent trash | Trash Grew in Size | +2 GB | /home/.Trash"},
        {source(homebrew, "", "1.7"),
         "Applications prominent shippingbox | jq Installed | Homebrew · 1.7 | /s/jq"},
        {source(configuration, "", "x"),
         "Mac Activity prominent doc.text | jq Created | "
         "Selected configuration file · Content fingerprint changed | /s/jq"},
        {source(homebrew, "1.6", "1.7"),
         "Applications prominent shippingbox | jq Changed | Homebrew · 1.6 → 1.7 | /s/jq"},
        {source(homebrew, "1.6", ""),
         "Applications prominent shippingbox | jq Removed | Homebrew · 1.6 → Not present | /s/jq"},
        {source(configuration, "x", ""),
         "Mac Activity prominent doc.text | jq Removed | "
         "Selected configuration file · Content fingerprint changed | /s/jq"},
        {source(diagnostic, "", "x"),
         "Mac Activity prominent doc.text.magnifyingglass | New Diagnostic Report | jq | /s/jq"},
    };
    EXPECT_TRUE(built(source(diagnostic, "x", "")).empty()) << "a removed report is not new";
    for (const auto& [arrange, expected] : cases) {
        const auto events = built(arrange);
        ASSERT_EQ(events.size(), 1U) << expected;
        EXPECT_EQ(worded(events[0]), expected);
        EXPECT_EQ(events[0].id, "00000000-0000-4000-8000-000000000001-"
                                "00000000-0000-4000-8000-000000000002-0");
        EXPECT_EQ(events[0].intervalStart, Date{60});
        EXPECT_EQ(events[0].timestamp, Date{120});
    }
    EXPECT_TRUE(built([](auto&, auto&) {}).empty());
}

TEST(EventBuilder, DatesAFolderByItsMeasurements) {
    const auto events = built([](auto& before, auto& after) {
        FolderSize was = folder("/a", 0);
        FolderSize is = folder("/a", 5'000'000'000);
        was.measuredAt = Date{10};
        is.measuredAt = Date{20};
        before.folders = test::shared(was);
        after.folders = test::shared(is);
    });
    EXPECT_EQ(events.at(0).intervalStart, Date{10});
    EXPECT_EQ(events.at(0).timestamp, Date{20});
}

TEST(EventBuilder, AddsTheSizesOfApplications) {
    const Application app = application("A");
    const auto removed = [&](StorageMeasurementRecord record) {
        return built([&](auto& before, auto&) {
                   before.applications.emplace(test::shared(app));
                   before.applicationStorage = {test::shared(measured(application("B"), 1), record),
                                                Date{}};
               })
            .at(0);
    };
    StorageMeasurementRecord record = measured(app, 1'500'000);
    EXPECT_EQ(removed(record).subtitle, "Previously 1 · Last measured size: 1.5 MB");
    EXPECT_EQ(*removed(record).removedApplicationSize, record);
    EXPECT_EQ(*removed(record).applicationSizeBefore, record);
    EXPECT_FALSE(removed(record).applicationSizeAfter);
    EXPECT_EQ(removed(record).identifier, app.bundleID);
    EXPECT_EQ(removed(record).appID, app.bundleID);

    // The size belongs to the item that was measured.
    StorageMeasurementItem stranger = *record.item;
    stranger.identifier = "org.example.Stranger";
    record.item.emplace(StorageMeasurementItem(stranger));
    EXPECT_TRUE(removed(record).removedApplicationSize);
    EXPECT_FALSE(removed(record).applicationSizeBefore);
    record.measuredItem = record.item;
    EXPECT_EQ(removed(record).subtitle, "Previously 1");
    record = measured(app, 1);
    record.bytes.reset();
    EXPECT_EQ(removed(record).subtitle, "Previously 1");
}

TEST(EventBuilder, UsesTheLaterObservation) {
    const Application old = application("A");
    Application renamed = application("A", "2");
    renamed.name = "Renamed";
    const auto events = built([&](auto& before, auto& after) {
        before.applications.emplace(test::shared(old));
        after.applications.emplace(test::shared(renamed));
        before.applicationStorage = {test::shared(measured(old, 1)), Date{}};
        after.applicationStorage = {test::shared(measured(old, 2)), Date{}};
        BackgroundItem helper = agentInside("A");
        helper.association.reset();
        after.backgroundItems.emplace(test::shared(helper));
        before.volumeContext = VolumeContext{"Old", {}, {}, {}, {}, {}};
        after.volumeContext = VolumeContext{"New", {}, {}, {}, {}, {}};
        before.volumeID = after.volumeID = "V";
        before.freeBytes = 0;
        after.freeBytes = 5'000'000'000;
    });
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(events[0].title, "Renamed Updated");
    EXPECT_EQ(events[0].applicationSizeBefore->bytes, 1);
    EXPECT_EQ(events[0].applicationSizeAfter->bytes, 2);
    EXPECT_EQ(events[1].title, "Renamed: New Background Item");
    EXPECT_EQ(events[2].subtitle, "New · 5 GB increase in free space · 5 GB remaining");

    const auto gone = built([&](auto& before, auto& after) {
        before.applications.emplace(test::shared(old));
        after.backgroundItems.emplace(test::shared(agentInside("A")));
    });
    EXPECT_EQ(gone.at(0).changes.size(), 2U) << "merged even into a removal";
}

TEST(EventBuilder, MergesBackgroundItemsInstalledWithAnApplication) {
    const auto events = [](double apart, const std::function<void(BackgroundItem&)>& differ) {
        return built([&](Snapshot& before, Snapshot& after) {
            after.timestamp = before.timestamp + apart;
            BackgroundItem helper = agentInside("B");
            differ(helper);
            after.applications.emplace(
                test::shared(application("A"), application("B"), application("C")));
            after.backgroundItems.emplace(test::shared(helper, agent("other")));
            before.operatingSystem = {"14", {}};
            after.operatingSystem = {"15", {}};
        });
    };
    const auto folded = events(3600, [](auto&) {});
    EXPECT_EQ(numbers(folded), "0:1 1:2 2:1 4:1 5:1 ");
    EXPECT_EQ(test::summary(folded[1].changes),
              "applicationInstalled /Applications/B.app\n"
              "backgroundAdded /Library/LaunchAgents/org.example.B.helper.plist");
    const char* apart = "0:1 1:1 2:1 3:1 4:1 5:1 ";
    EXPECT_EQ(numbers(events(3601, [](auto&) {})), apart);
    EXPECT_EQ(numbers(events(60, [](auto& item) { item.association = "Same label"; })), apart);
    EXPECT_EQ(numbers(events(60, [](auto& item) { item.associatedAppID = "org.else"; })), apart);
    EXPECT_EQ(numbers(events(60, [](auto& item) { item.associatedAppID.reset(); })), apart);
    EXPECT_EQ(numbers(events(60, [](auto& item) { item.program.reset(); })), apart);
    EXPECT_EQ(numbers(events(60, [](auto& item) { item.program = "/Applications/B.apple/x"; })),
              apart);
}

TEST(EventDisplay, ReplacesTitlesOfOlderReleases) {
    const std::vector<Change> added{change::BackgroundAdded{{Shared(agent("a"))}}};
    Event titled, installed, slept;
    titled.title = "Lantern: New BACKGROUND Item";
    installed.installationRecord.emplace({"Tool", "", {}, "", {}});
    slept.installationRecord.emplace({});
    slept.systemActivity.emplace({});
    const struct {
        Event event;
        std::vector<Change> changes;
        const char* shown;
    } cases[] = {
        {{}, {}, " | Second line"},
        {titled, added, "Lantern: New Background Item | Second line"},
        {{}, added, "New Background Item | Second line"},
        {titled, {change::MetadataChanged{}}, "Lantern: New BACKGROUND Item | Second line"},
        {installed, added, "Tool Installation Recorded | Second line"},
        {slept, added, "Mac Going to Sleep | Second line"},
        {{},
         {change::FreeDiskSpaceChanged{{5, 5}}},
         "Space Freed Up | Zero KB increase in free space · 5 bytes remaining"},
        {{},
         {change::FolderSizeChanged{{Shared(folder("/a", 1)), Shared(folder("/a", 1))}}},
         "a Shrank in Size | Second line"},
    };
    for (auto [event, changes, shown] : cases) {
        event.changes = changes;
        event.subtitle = "Second line";
        EXPECT_EQ(displayTitle(event) + " | " + displaySubtitle(event), shown);
    }
}
