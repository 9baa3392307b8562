#include "bench/Generator.h"

#include "core/base/Digest.h"
#include "core/timeline/EventBuilder.h"

#include <array>

namespace tidemark::bench {

namespace {

constexpr double firstCapture = 750'000'000.25;
constexpr double interval = 1800;

constexpr std::array definitionKeys{"ProgramArguments", "RunAtLoad", "KeepAlive", "Disabled"};

/// The version of thing `index` in snapshot `generation`: one in a hundred moves each time.
std::size_t versionOf(std::size_t index, std::size_t generation, Sharing sharing) {
    return sharing == Sharing::none ? generation : (generation + index * 37) / 100;
}

Application application(std::size_t index, std::size_t version) {
    const std::string number = std::to_string(index);
    return {"org.example.application" + number,
            "Application " + number,
            "4." + std::to_string(version),
            "4" + std::to_string(version) + "0",
            "/Applications/Application " + number + ".app",
            Date{firstCapture + static_cast<double>(version) * 86'400.125}};
}

BackgroundItem backgroundItem(std::size_t index, std::size_t version) {
    const std::string label = "org.example.application" + std::to_string(index) + ".helper";
    BackgroundItem item;
    item.identifier = label;
    item.path = "/Library/LaunchAgents/" + label + ".plist";
    item.program =
        "/Applications/Application " + std::to_string(index) + ".app/Contents/MacOS/helper";
    item.safeSettings = {{"RunAtLoad", "Yes"}, {"KeepAlive", "No"}, {"Disabled", "No"}};
    std::map<std::string, std::string> fingerprints;
    for (const char* key : definitionKeys)
        fingerprints[key] = Sha256::hex(label + key + std::to_string(version));
    item.definitionFingerprints = std::move(fingerprints);
    item.associatedAppID = "org.example.application" + std::to_string(index);
    item.association = BackgroundItem::insideBundle;
    return item;
}

FolderSize folder(std::size_t index, std::size_t children, std::size_t generation) {
    FolderSize size;
    size.name = "Folder " + std::to_string(index);
    size.path = "/Users/someone/" + size.name;
    for (std::size_t child = 0; child < children; ++child) {
        // One child in ten moves from one snapshot to the next.
        const std::size_t moved = (generation + child) / 10;
        const auto bytes = static_cast<std::int64_t>(1'000'003 * (child + 1) + 7'777 * moved);
        size.breakdown["Child folder " + std::to_string(child)] = bytes;
        size.bytes += bytes;
    }
    size.rollingMeasurement = true;
    size.measuredAt = Date{firstCapture + static_cast<double>(generation) * interval};
    return size;
}

} // namespace

Snapshot snapshotOf(std::size_t applications, std::size_t backgroundItems, std::size_t folders,
                    std::size_t childrenEach, std::size_t generation, Sharing sharing) {
    Snapshot snapshot;
    snapshot.id = Uuid::random();
    snapshot.timestamp = Date{firstCapture + static_cast<double>(generation) * interval};
    for (std::size_t i = 0; i < applications; ++i)
        snapshot.applications.push_back(application(i, versionOf(i, generation, sharing)));
    for (std::size_t i = 0; i < backgroundItems; ++i)
        snapshot.backgroundItems.push_back(backgroundItem(i, versionOf(i, generation, sharing)));
    for (std::size_t i = 0; i < folders; ++i)
        snapshot.folders.push_back(folder(i, childrenEach, generation));
    snapshot.freeBytes = 200'000'000'000 - static_cast<std::int64_t>(generation) * 10'000'000;
    snapshot.volumeID = "0E239BC6-F960-3107-89CF-1C97F78BB46B";
    snapshot.coverage.applicationRoots = {"/Applications"};
    snapshot.coverage.backgroundRoots = {"/Library/LaunchAgents"};
    snapshot.expectedCaptureInterval = interval;
    return snapshot;
}

std::vector<Shared<Event>> eventsOf(std::size_t count) {
    const Snapshot before = snapshotOf(200, 60, 12, 60, 0);
    Snapshot after = snapshotOf(250, 60, 12, 60, 100);
    after.freeBytes = *before.freeBytes - 7'000'000'000;
    const std::vector<Event> kinds = EventBuilder::build(before, after);
    std::vector<Shared<Event>> events;
    for (std::size_t i = 0; i < count; ++i) {
        Event event = kinds[i % kinds.size()];
        event.id = Uuid::random().text() + "-" + std::to_string(i);
        event.timestamp = Date{firstCapture - static_cast<double>(i) * 251.5};
        event.intervalStart = event.timestamp + -interval;
        events.emplace_back(std::move(event));
    }
    return events;
}

Journal journalAtItsLimits(Sharing sharing) {
    Journal journal;
    for (std::size_t i = 0; i < Journal::snapshotLimit; ++i)
        journal.snapshots.emplace_back(snapshotOf(250, 60, 12, 60, i, sharing));
    journal.events = eventsOf(Journal::eventLimit);
    return journal;
}

} // namespace tidemark::bench
