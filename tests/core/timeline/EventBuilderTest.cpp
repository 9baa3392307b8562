#include "core/timeline/EventBuilder.h"

#include "core/timeline/EventDisplay.h"
#include "tests/support/Observations.h"

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

/// The number that the ids of a comparison end with, then how many changes the event tells.
std::string numbers(const std::vector<Event>& events) {
    std::string text;
    for (const Event& event : events)
        text += event.id.substr(event.id.rfind('-') + 1) + ":"
                + std::to_string(event.changes.size()) + " ";
    return text;
}

StorageMeasurementRecord measured(const Application& app, std::int64_t bytes) {
    StorageMeasurementRecord record;
    record.item.path = app.path;
    record.item.identifier = app.bundleID;
    record.measuredItem = record.item;
    record.bytes = bytes;
    return record;
}

} // namespace

TEST(EventBuilder, WordsEachChange) {
    using Arrange = std::function<void(Snapshot&, Snapshot&)>;
    const auto sizes = [](FolderSize was, FolderSize is) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            before.folders = {was};
            after.folders = {is};
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
    const auto source = [](ObservedMetadata::Kind kind, std::string was,
                           std::string is) -> Arrange {
        return [=](Snapshot& before, Snapshot& after) {
            const auto items = [&](const std::string& value) {
                return value.empty() ? std::vector<ObservedMetadata>()
                                     : std::vector{metadata(kind, "/s/jq", value)};
            };
            before.additionalReports = {test::report("/s", items(was))};
            after.additionalReports = {test::report("/s", items(is))};
        };
    };
    const auto movies = [](std::int64_t bytes, std::map<std::string, std::int64_t> parts) {
        return folder("/home/Movies", bytes, std::move(parts));
    };
    constexpr auto giga = 1'000'000'000LL;
    using enum ObservedMetadata::Kind;
    const std::pair<Arrange, const char*> cases[] = {
        {[](auto&, auto& after) { after.applications = {application("A", "2.0")}; },
         "Applications prominent plus.app | A Installed | 2.0 | /Applications/A.app"},
        {[](auto& before, auto&) { before.applications = {application("A", "2.0")}; },
         "Applications prominent minus.circle | A Removed | Previously 2.0 | "
         "/Applications/A.app"},
        {[](auto& before, auto& after) {
             before.applications = {application("A", "1", "7")};
             after.applications = {application("A", "2", "8")};
         },
         "Applications prominent arrow.triangle.2.circlepath | A Updated | 1 → 2 | "
         "/Applications/A.app"},
        {[](auto& before, auto& after) {
             before.applications = {application("A", "1", "7")};
             after.applications = {application("A", "1", "8")};
         },
         "Applications prominent arrow.triangle.2.circlepath | A Updated | Build 7 → 8 | "
         "/Applications/A.app"},
        {[](auto&, auto& after) { after.backgroundItems = {agent("org.sync")}; },
         "Background items prominent gearshape.2 | New Background Item | "
         "LaunchAgent · org.sync | /Library/LaunchAgents/org.sync.plist"},
        {[](auto& before, auto& after) {
             before.applications = after.applications = {application("A")};
             after.backgroundItems = {agentInside("A")};
         },
         "Background items prominent gearshape.2 | A: New Background Item | "
         "LaunchAgent · org.example.A.helper | /Library/LaunchAgents/org.example.A.helper.plist"},
        {[](auto& before, auto&) { before.backgroundItems = {agent("org.sync")}; },
         "Background items routine gearshape.2 | Background Item Removed | "
         "LaunchAgent · org.sync | /Library/LaunchAgents/org.sync.plist"},
        {[](auto& before, auto& after) {
             before.backgroundItems = {agent("org.sync")};
             BackgroundItem changed = agent("org.sync");
             changed.kind = BackgroundItem::Kind::daemon;
             changed.program = "/bin/x";
             after.backgroundItems = {changed};
         },
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
        {sizes(trash(0), trash(100'000'000)),
         "Storage prominent trash | Trash Grew in Size | +100 MB | /home/.Trash"},
        {sizes(trash(500'000'000, 1), trash(0, 0)),
         "Storage prominent trash | Trash Is Now Empty | "
         "Previously 1 items · 500 MB · Observed empty | /home/.Trash"},
        {sizes(trash(500'000'000), trash(0, 0)),
         "Storage routine trash | Trash Shrank in Size | −500 MB | /home/.Trash"},
        {[&](auto& before, auto& after) {
             FolderSize rolling = trash(1, 1);
             rolling.rollingMeasurement = true;
             sizes(rolling, trash(0, 0))(before, after);
         },
         "Storage prominent trash | Trash Is Now Empty | "
         "Previously 1 item · Previous size unavailable | /home/.Trash"},
        {free(9 * giga, 2 * giga, true), "Storage prominent internaldrive | Less Space Available | "
                                         "Disk · 7 GB decrease in free space · 2 GB remaining | -"},
        {free(2 * giga, 9 * giga, false), "Storage routine internaldrive | Space Freed Up | "
                                          "7 GB increase in free space · 9 GB remaining | -"},
        {source(homebrew, "", "1.7"),
         "Applications prominent shippingbox | jq Installed | Homebrew · 1.7 | /s/jq"},
        {source(homebrew, "1.6", "1.7"),
         "Applications prominent shippingbox | jq Changed | Homebrew · 1.6 → 1.7 | /s/jq"},
        {source(homebrew, "1.6", ""),
         "Applications prominent shippingbox | jq Removed | Homebrew · 1.6 → Not present | /s/jq"},
        {source(configuration, "", "x"),
         "Mac Activity prominent doc.text | jq Created | "
         "Selected configuration file · Content fingerprint changed | /s/jq"},
        {source(configuration, "x", ""),
         "Mac Activity prominent doc.text | jq Removed | "
         "Selected configuration file · Content fingerprint changed | /s/jq"},
        {source(diagnostic, "", "x"),
         "Mac Activity prominent doc.text.magnifyingglass | New Diagnostic Report | jq | /s/jq"},
    };
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
        before.folders = {was};
        after.folders = {is};
    });
    EXPECT_EQ(events.at(0).intervalStart, Date{10});
    EXPECT_EQ(events.at(0).timestamp, Date{20});
}

TEST(EventBuilder, GivesApplicationsTheirSizes) {
    const Application app = application("A");
    const auto removed = [&](StorageMeasurementRecord record) {
        return built([&](auto& before, auto&) {
                   before.applications = {app};
                   before.applicationStorage = {{measured(application("B"), 1), record}, Date{}};
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

    // What counts is the item that was measured.
    record.item.identifier = "org.example.Stranger";
    EXPECT_TRUE(removed(record).removedApplicationSize);
    EXPECT_FALSE(removed(record).applicationSizeBefore);
    record.measuredItem->identifier = "org.example.Stranger";
    EXPECT_EQ(removed(record).subtitle, "Previously 1");
    record = measured(app, 1);
    record.bytes.reset();
    EXPECT_EQ(removed(record).subtitle, "Previously 1");
}

TEST(EventBuilder, PrefersTheLaterObservation) {
    const Application old = application("A");
    Application renamed = application("A", "2");
    renamed.name = "Renamed";
    const auto events = built([&](auto& before, auto& after) {
        before.applications = {old};
        after.applications = {renamed};
        before.applicationStorage = {{measured(old, 1)}, Date{}};
        after.applicationStorage = {{measured(old, 2)}, Date{}};
        BackgroundItem helper = agentInside("A");
        helper.association.reset();
        after.backgroundItems = {helper};
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
        before.applications = {old};
        after.backgroundItems = {agentInside("A")};
    });
    EXPECT_EQ(gone.at(0).changes.size(), 2U) << "folded even into a removal";
}

TEST(EventBuilder, FoldsWhatAnApplicationBroughtAlong) {
    const auto events = [](double apart, const std::function<void(BackgroundItem&)>& differ) {
        return built([&](Snapshot& before, Snapshot& after) {
            after.timestamp = before.timestamp + apart;
            BackgroundItem helper = agentInside("B");
            differ(helper);
            after.applications = {application("A"), application("B"), application("C")};
            after.backgroundItems = {helper, agent("other")};
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

TEST(EventDisplay, PutsOlderTitlesInPresentWording) {
    const auto shown = [](const std::function<void(Event&)>& arrange) {
        Event event;
        event.title = "Stored";
        event.subtitle = "Second line";
        arrange(event);
        return displayTitle(event) + " | " + displaySubtitle(event);
    };
    const Change added = change::BackgroundAdded{{agent("a")}};
    EXPECT_EQ(shown([](auto&) {}), "Stored | Second line");
    EXPECT_EQ(shown([&](auto& event) {
                  event.changes = {added};
                  event.title = "Lantern: New BACKGROUND Item";
              }),
              "Lantern: New Background Item | Second line");
    EXPECT_EQ(shown([&](auto& event) { event.changes = {added}; }),
              "New Background Item | Second line");
    EXPECT_EQ(shown([](auto& event) { event.changes = {change::MetadataChanged{}}; }),
              "Stored | Second line");
    EXPECT_EQ(shown([&](auto& event) {
                  event.changes = {added};
                  event.installationRecord = InstallationRecord{"Tool", "", {}, "", {}};
              }),
              "Tool Installation Recorded | Second line");
    EXPECT_EQ(shown([&](auto& event) {
                  event.changes = {added};
                  event.installationRecord = InstallationRecord{};
                  event.systemActivity = SystemActivity{};
              }),
              "Mac Going to Sleep | Second line");
    EXPECT_EQ(shown([](auto& event) { event.changes = {change::FreeDiskSpaceChanged{{5, 5}}}; }),
              "Space Freed Up | Zero KB increase in free space · 5 bytes remaining");
    EXPECT_EQ(shown([](auto& event) {
                  event.changes = {change::FolderSizeChanged{{folder("/a", 1), folder("/a", 1)}}};
              }),
              "a Shrank in Size | Second line");
}

TEST(EventDisplay, NamesEveryLiveActivity) {
    using Kind = SystemActivity::Kind;
    const auto title = [](Kind kind, const std::function<void(SystemActivity&)>& arrange = {}) {
        SystemActivity activity;
        activity.kind = kind;
        if (arrange)
            arrange(activity);
        return activity.title();
    };
    const auto environment = [](std::optional<bool> connected, const char* state = "") {
        return [=](SystemActivity& activity) {
            activity.environmentActivity.emplace().deviceName = "Studio";
            activity.environmentActivity->connected = connected;
            activity.environmentActivity->state = state;
        };
    };
    const auto wifi = [](const char* was, const char* is) {
        return [=](SystemActivity& activity) {
            activity.wifiConnected = true;
            activity.previousWiFi.emplace().networkName = was;
            activity.wifiContext.emplace().networkName = is;
        };
    };
    using Availability = NetworkConnectionState::Availability;
    const auto network = [](Availability was, Availability is) {
        return [=](SystemActivity& activity) {
            activity.networkChange = {NetworkConnectionState::make(was, {}),
                                      NetworkConnectionState::make(is, {})};
        };
    };
    const std::pair<std::string, const char*> cases[] = {
        {title(Kind::woke), "Mac Woke Up"},
        {title(Kind::powerOffRequested), "Unverified Session-End Notification"},
        {title(Kind::volumeChanged), "Volume Unmounted"},
        {title(Kind::volumeChanged, environment(true)), "Studio Mounted"},
        {title(Kind::displayChanged), "Display Configuration Changed"},
        {title(Kind::displayChanged, environment({})), "Studio Configuration Changed"},
        {title(Kind::displayChanged, environment(false)), "Studio Disconnected"},
        {title(Kind::displayChanged, environment(true)), "Studio Connected"},
        {title(Kind::thermalChanged), "Thermal Pressure Eased"},
        {title(Kind::thermalChanged, environment({}, "serious")), "High Thermal Pressure"},
        {title(Kind::thermalChanged, environment({}, "critical")), "Critical Thermal Pressure"},
        {title(Kind::networkChanged), "Network Connection Changed"},
        {title(Kind::networkChanged, network(Availability::available, Availability::unavailable)),
         "Network Connection Unavailable"},
        {title(Kind::networkChanged,
               network(Availability::connectionRequired, Availability::available)),
         "Network Connection Available"},
        {title(Kind::networkChanged,
               network(Availability::connectionRequired, Availability::unavailable)),
         "Network Connection Changed"},
        {title(Kind::bluetoothChanged), "Bluetooth Connection Changed"},
        {title(Kind::bluetoothChanged,
               [](auto& a) { a.bluetoothChange.emplace().deviceName = "Mouse"; }),
         "Mouse Disconnected"},
        {title(Kind::wifiChanged), "Wi-Fi Disconnected"},
        {title(Kind::wifiChanged, [](auto& a) { a.wifiConnected = true; }), "Wi-Fi Connected"},
        {title(Kind::wifiChanged, wifi("Home", "Home")), "Wi-Fi Connected"},
        {title(Kind::wifiChanged, wifi("Home", "Work")), "Wi-Fi Network Changed"},
        {title(Kind::bluetoothPowerChanged), "Bluetooth Turned Off"},
        {title(Kind::bluetoothPowerChanged, [](auto& a) { a.bluetoothPoweredOn = true; }),
         "Bluetooth Turned On"},
        {title(Kind::batteryChanged), "Battery Changed"},
        {title(Kind::batteryChanged,
               [](auto& a) { a.batteryActivity.emplace().kind = BatteryActivity::Kind::low; }),
         "Battery Low"},
        {title(Kind::lowPowerModeChanged), "Low Power Mode Disabled"},
        {title(Kind::lowPowerModeChanged, [](auto& a) { a.lowPowerModeEnabled = true; }),
         "Low Power Mode Enabled"},
    };
    for (const auto& [made, expected] : cases)
        EXPECT_EQ(made, expected);
}

TEST(ObservedSession, SaysHowLongItTook) {
    const std::pair<double, const char*> cases[] = {
        {-5, "Under a minute"},
        {59.9, "Under a minute"},
        {60, "1 min"},
        {3599, "59 min"},
        {3600, "1 hr 0 min"},
        {90'061, "25 hr 1 min"},
        {1e300, "16666666666666 hr 40 min"},
    };
    for (const auto& [seconds, label] : cases)
        EXPECT_EQ((ObservedSession{Date{0}, Date{seconds}, {}, {}}.durationLabel()), label);
}
