#include "core/journal/Journal.h"

#include "core/history/InstallationHistory.h"
#include "core/journal/SnapshotSharing.h"
#include "core/timeline/EventBuilder.h"
#include "core/timeline/ObservationCoverage.h"

#include <algorithm>
#include <unordered_set>

namespace tidemark {

namespace {

bool holdsFileNames(const Snapshot& snapshot) {
    const auto named = [](const auto& folder) { return folder.directFileSizes.has_value(); };
    return std::ranges::any_of(snapshot.folders, [&](const auto& size) { return named(*size); })
           || (snapshot.folderStorage && std::ranges::any_of(*snapshot.folderStorage, named));
}

Shared<FolderSize> withoutFileNames(const FolderSize& size) {
    FolderSize sums = size;
    sums.directFileSizes.reset();
    return Shared(std::move(sums));
}

Shared<Snapshot> withoutFileNames(Snapshot snapshot) {
    for (Shared<FolderSize>& size : snapshot.folders)
        if (size->directFileSizes)
            size = withoutFileNames(*size);
    if (snapshot.folderStorage)
        for (FolderStorageReport& report : *snapshot.folderStorage)
            report.directFileSizes.reset();
    return Shared(std::move(snapshot));
}

/// Drops the file names of a folder change that has too many to be kept for the lifetime of an
/// event. Drops them on both sides: with one side alone every file would appear as added or
/// removed.
void dropManyFileNames(Event& event) {
    const auto many = [](const Shared<FolderSize>& size) {
        return size->directFileSizes && size->directFileSizes->size() > Journal::eventFileNameLimit;
    };
    for (Change& change : event.changes) {
        auto* const resized = std::get_if<change::FolderSizeChanged>(&change);
        if (!resized || !(many(resized->before) || many(resized->after)))
            continue;
        resized->before = withoutFileNames(*resized->before);
        resized->after = withoutFileNames(*resized->after);
    }
}

} // namespace

bool Journal::mayLackEventsSince(Date date) const {
    if (eventsPrunedThrough)
        return date < *eventsPrunedThrough;
    return events.size() >= eventLimit && date < events.front()->timestamp;
}

std::vector<Event> Journal::eventsBetween(const Snapshot& from, const Snapshot& to) {
    std::vector<Event> added = EventBuilder::build(from, to);
    if (auto resumed = ObservationCoverage::completedEvent(from, to))
        added.push_back(std::move(*resumed));
    return added;
}

void Journal::append(Shared<Snapshot> snapshot, bool comparingPrevious) {
    // Done before the events are made, so that they refer to the shared objects.
    if (!snapshots.empty())
        snapshot.emplace(SnapshotSharing::sharingWith(*snapshots.back(), *snapshot));
    if (comparingPrevious && !snapshots.empty())
        for (Event& event : eventsBetween(*snapshots.back(), *snapshot)) {
            dropManyFileNames(event);
            events.emplace_back(std::move(event));
        }
    snapshots.push_back(std::move(snapshot));
    if (snapshots.size() > snapshotLimit)
        snapshots.erase(snapshots.begin(),
                        snapshots.end() - static_cast<std::ptrdiff_t>(snapshotLimit));
    dropOldFileNames();
    pruneEvents();
}

bool Journal::dropOldestSnapshots() {
    constexpr std::size_t needed = 2;
    if (snapshots.size() <= needed)
        return false;
    const std::size_t dropped =
        std::clamp<std::size_t>(snapshots.size() / 4, 1, snapshots.size() - needed);
    snapshots.erase(snapshots.begin(), snapshots.begin() + static_cast<std::ptrdiff_t>(dropped));
    return true;
}

void Journal::dropOldFileNames() {
    // All snapshots are checked: earlier releases kept the names in every one.
    for (std::size_t place = 0; place + snapshotsWithFileNames < snapshots.size(); ++place)
        if (holdsFileNames(*snapshots[place]))
            snapshots[place] = withoutFileNames(*snapshots[place]);
}

void Journal::pruneEvents() {
    if (events.size() <= eventLimit)
        return;
    // `events` are not sorted by time, so the latest of the dropped ones need not be the last.
    const auto end = events.end() - static_cast<std::ptrdiff_t>(eventLimit);
    Date latest = eventsPrunedThrough.value_or(Date::distantPast());
    for (auto event = events.begin(); event != end; ++event)
        latest = std::max(latest, (*event)->timestamp);
    eventsPrunedThrough = latest;
    events.erase(events.begin(), end);
}

std::size_t Journal::importInstallations(const std::vector<InstallationRecord>& records) {
    // The id is a digest, so it is computed once per record.
    struct Entry {
        std::string id;
        InstallationRecord record;
    };
    std::vector<Entry> entries;
    std::unordered_set<std::string> seen;
    for (auto& record : importedInstallations.value_or(std::vector<InstallationRecord>())) {
        entries.push_back({record.id(), std::move(record)});
        seen.insert(entries.back().id);
    }
    const std::size_t known = entries.size();
    for (const auto& record : records)
        if (std::string id = record.id(); seen.insert(id).second)
            entries.push_back({std::move(id), record});
    const std::size_t added = entries.size() - known;

    std::ranges::stable_sort(entries, [](const Entry& a, const Entry& b) {
        return a.record.recordedAt != b.record.recordedAt
                   ? a.record.recordedAt < b.record.recordedAt
                   : a.id < b.id;
    });
    auto& stored = importedInstallations.emplace();
    for (Entry& entry : entries)
        stored.push_back(std::move(entry.record));
    return added;
}

std::vector<Shared<Event>> Journal::installationEvents() const {
    std::vector<Shared<Event>> made;
    if (importedInstallations)
        for (const auto& record : *importedInstallations)
            made.emplace_back(InstallationHistory::event(record));
    return made;
}

} // namespace tidemark
