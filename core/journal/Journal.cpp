#include "core/journal/Journal.h"

#include "core/base/InternPool.h"
#include "core/history/InstallationHistory.h"
#include "core/timeline/EventBuilder.h"
#include "core/timeline/ObservationCoverage.h"

#include <algorithm>
#include <unordered_set>

namespace tidemark {

namespace {

template <class T>
void unify(InternPool& pool, std::vector<Shared<T>>& values) {
    for (auto& value : values)
        pool.unify(value);
}

/// Makes `snapshot` share what it holds alike with others of the pool.
void unify(InternPool& pool, Snapshot& snapshot) {
    unify(pool, snapshot.applications);
    unify(pool, snapshot.backgroundItems);
    if (snapshot.applicationStorage)
        unify(pool, snapshot.applicationStorage->records);
    if (snapshot.folderStorage)
        for (auto& report : *snapshot.folderStorage)
            unify(pool, report.children.records);
}

/// The same snapshot, sharing its recurring parts with the one before, as it would after a load:
/// otherwise a recorder that runs for weeks would hold every application hundreds of times.
Shared<Snapshot> sharingWith(const Snapshot& previous, const Snapshot& snapshot) {
    InternPool pool;
    Snapshot known = previous;
    unify(pool, known);
    Snapshot sharing = snapshot;
    unify(pool, sharing);
    return sharing;
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
    if (comparingPrevious && !snapshots.empty())
        for (Event& event : eventsBetween(*snapshots.back(), *snapshot))
            events.emplace_back(std::move(event));
    snapshots.push_back(snapshots.empty() ? std::move(snapshot)
                                          : sharingWith(*snapshots.back(), *snapshot));
    if (snapshots.size() > snapshotLimit)
        snapshots.erase(snapshots.begin(),
                        snapshots.end() - static_cast<std::ptrdiff_t>(snapshotLimit));
    pruneEvents();
}

void Journal::pruneEvents() {
    if (events.size() <= eventLimit)
        return;
    // By position: the latest of the dropped ones need not be the last of them.
    const auto end = events.end() - static_cast<std::ptrdiff_t>(eventLimit);
    Date latest = eventsPrunedThrough.value_or(Date::distantPast());
    for (auto event = events.begin(); event != end; ++event)
        latest = std::max(latest, (*event)->timestamp);
    eventsPrunedThrough = latest;
    events.erase(events.begin(), end);
}

std::size_t Journal::importInstallations(const std::vector<InstallationRecord>& records) {
    // The id is a digest: each record's is made once.
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
