#include "bench/Generator.h"

#include "core/base/Digest.h"
#include "core/timeline/EventBuilder.h"

#include <array>

namespace tidemark::bench {

namespace {

constexpr double firstCapture = 750'000'000.25;
constexpr double interval = 1800;

constexpr std::array definitionKeys{"ProgramArguments", "RunAtLoad", "KeepAlive", "Disabled"};

/// The version of item `index` in snapshot `generation`. One item in a hundred changes each time,
/// with `Sharing::none` every item.
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
    SizeByName parts;
    for (std::size_t child = 0; child < children; ++child) {
        // One child in ten changes from one snapshot to the next.
        const std::size_t moved = (generation + child) / 10;
        const auto bytes = static_cast<std::int64_t>(1'000'003 * (child + 1) + 7'777 * moved);
        parts["Child folder " + std::to_string(child)] = bytes;
        size.bytes += bytes;
    }
    size.breakdown.emplace(std::move(parts));
    size.rollingMeasurement = true;
    size.measuredAt = Date{firstCapture + static_cast<double>(generation) * interval};
    return size;
}

/// The numbers of a realistic folder: its subfolders, the parts of all of them together, its own
/// files.
struct RealFolder {
    const char* path;
    std::size_t children;
    std::size_t parts;
    std::size_t files;
};
constexpr std::array realFolders{RealFolder{"/var", 9, 35, 0}, RealFolder{"/etc", 71, 99, 66},
                                 RealFolder{"/usr/lib", 61, 191, 1},
                                 RealFolder{"/usr/share", 117, 746, 0}};

Date dateOf(std::size_t generation) {
    return Date{firstCapture + static_cast<double>(generation) * interval};
}

/// The record that the scanner makes of subfolder `index` when it is measured again.
StorageMeasurementRecord measured(const RealFolder& root, std::size_t index,
                                  std::size_t generation) {
    const std::size_t version = versionOf(index, generation, Sharing::realistic);
    const auto bytes = [&](std::size_t part) {
        return static_cast<std::int64_t>(40'961 * (part + 1) + (part == 0 ? version * 777 : 0));
    };
    SizeByName parts{{std::string(FolderSize::filesInFolder), bytes(0)}};
    for (std::size_t part = 1; part < root.parts / root.children; ++part)
        parts["component-" + std::to_string(part)] = bytes(part);
    StorageMeasurementRecord record;
    record.item.emplace(StorageMeasurementItem::directory(
        std::string(root.path) + "/subfolder-" + std::to_string(index), dateOf(version)));
    record.measuredItem.emplace(StorageMeasurementItem(*record.item));
    record.bytes = 0;
    for (const auto& [name, size] : parts)
        *record.bytes += size;
    record.allocatedBytes = *record.bytes * 5 / 4;
    record.breakdown.emplace(std::move(parts));
    record.breakdownComplete = true;
    record.lastAttemptDuration = 0.00296 + static_cast<double>(generation % 97) * 1e-6;
    record.visitedEntries = static_cast<std::int64_t>(400 + index);
    record.measuredAt = record.attemptedAt =
        dateOf(generation) + static_cast<double>(index) * 0.0037;
    return record;
}

SizeByName files(std::size_t count, std::size_t changed) {
    SizeByName sizes;
    for (std::size_t i = 0; i < count; ++i)
        sizes["IMG_" + std::to_string(100'000 + i) + ".jpeg"] =
            static_cast<std::int64_t>(2'400'000 + i + (i == changed ? 1 : 0));
    return sizes;
}

/// Adds a folder to a snapshot as a capture does, with the report of the scanner.
void addFolder(Snapshot& snapshot, const RealFolder& folder, SizeByName own) {
    FolderStorageReport report;
    report.path = folder.path;
    report.name = lastPathComponent(report.path);
    report.itemCount = static_cast<std::int64_t>(folder.children + own.size());
    for (const auto& [name, bytes] : own)
        report.directFileBytes += bytes;
    report.directAllocatedBytes = report.directFileBytes * 5 / 4;
    if (own.size() <= FolderSize::directFileLimit)
        report.directFileSizes.emplace(std::move(own));
    report.sampledAt = report.children.observedAt = snapshot.timestamp;
    const auto generation =
        static_cast<std::size_t>((snapshot.timestamp.secondsSince2001 - firstCapture) / interval);
    for (std::size_t i = 0; i < folder.children; ++i)
        report.children.records.emplace_back(measured(folder, i, generation));
    snapshot.folders.emplace_back(*report.folderSize());
    snapshot.folderStorage->push_back(std::move(report));
}

Snapshot captureWithoutFolders(std::size_t applications, std::size_t backgroundItems,
                               std::size_t generation) {
    Snapshot snapshot = snapshotOf(applications, backgroundItems, 0, 0, generation);
    snapshot.folderStorage.emplace();
    return snapshot;
}

Journal journalOf(const auto& capture) {
    Journal journal;
    for (std::size_t i = 0; i < Journal::snapshotLimit; ++i)
        journal.append(Shared(capture(i)), true);
    return journal;
}

} // namespace

Snapshot captureOfRealFolders(std::size_t generation) {
    Snapshot snapshot = captureWithoutFolders(40, 60, generation);
    for (const RealFolder& folder : realFolders)
        addFolder(snapshot, folder, files(folder.files, generation / 100));
    return snapshot;
}

Snapshot captureOfFiles(std::size_t count, bool changing, std::size_t generation) {
    Snapshot snapshot = captureWithoutFolders(0, 0, generation);
    addFolder(snapshot, {"/home/someone/Pictures", 0, 0, count},
              files(count, changing ? generation : count));
    return snapshot;
}

Journal journalOfRealFolders() {
    return journalOf(captureOfRealFolders);
}

Journal journalOfFiles(std::size_t count, bool changing) {
    return journalOf(
        [&](std::size_t generation) { return captureOfFiles(count, changing, generation); });
}

Snapshot snapshotOf(std::size_t applications, std::size_t backgroundItems, std::size_t folders,
                    std::size_t childrenEach, std::size_t generation, Sharing sharing) {
    Snapshot snapshot;
    snapshot.id = Uuid::random();
    snapshot.timestamp = Date{firstCapture + static_cast<double>(generation) * interval};
    std::vector<Shared<Application>> installed;
    for (std::size_t i = 0; i < applications; ++i)
        installed.emplace_back(application(i, versionOf(i, generation, sharing)));
    snapshot.applications.emplace(std::move(installed));
    std::vector<Shared<BackgroundItem>> services;
    for (std::size_t i = 0; i < backgroundItems; ++i)
        services.emplace_back(backgroundItem(i, versionOf(i, generation, sharing)));
    snapshot.backgroundItems.emplace(std::move(services));
    for (std::size_t i = 0; i < folders; ++i)
        snapshot.folders.emplace_back(folder(i, childrenEach, generation));
    snapshot.freeBytes = 200'000'000'000 - static_cast<std::int64_t>(generation) * 10'000'000;
    snapshot.volumeID = "0E239BC6-F960-3107-89CF-1C97F78BB46B";
    snapshot.coverage.applicationRoots.emplace({"/Applications"});
    snapshot.coverage.backgroundRoots.emplace({"/Library/LaunchAgents"});
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
