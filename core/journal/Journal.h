#pragma once

#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <optional>
#include <vector>

namespace tidemark {

/// The whole observed history, as one value and one document. Snapshots and events are shared and
/// immutable, so a copy costs pointers. All rules of its growth lie in `append`.
struct Journal {
    static constexpr std::int64_t supportedVersion = 1;
    static constexpr std::size_t snapshotLimit = 720;
    static constexpr std::size_t eventLimit = 10'000;
    /// How many of the newest snapshots keep the names of a folder's own files. They take the most
    /// room by far, and are of use for the latest comparison only.
    static constexpr std::size_t snapshotsWithFileNames = 2;
    /// Most names of files that an event keeps of one folder.
    static constexpr std::size_t eventFileNameLimit = 2'000;

    std::int64_t schemaVersion = supportedVersion;
    /// Oldest first.
    std::vector<Shared<Snapshot>> snapshots;
    /// In order of creation; sorting is for screens.
    std::vector<Shared<Event>> events;
    /// Named snapshots with copies of their own, never pruned.
    std::vector<Baseline> baselines;
    std::optional<Date> lastChecked;
    /// What the operating system remembered, oldest first; apart from `events`.
    std::optional<std::vector<InstallationRecord>> importedInstallations;
    std::optional<Date> initialHistoryImportCompletedAt;
    /// The latest time among events that were ever pruned.
    std::optional<Date> eventsPrunedThrough;

    /// Records a capture. With `comparingPrevious` the differences to the last snapshot become
    /// events, followed by the one that ends a gap. The oldest snapshots and events beyond the
    /// limits are dropped, and the names of files in all but the newest snapshots. The new one
    /// shares with the last what both hold alike.
    void append(Shared<Snapshot> snapshot, bool comparingPrevious);

    /// Merges records by their id, oldest first; returns how many were new.
    std::size_t importInstallations(const std::vector<InstallationRecord>& records);

    /// The events of the imported installations. They are not stored and count against no limit.
    std::vector<Shared<Event>> installationEvents() const;

    /// Events later than `date` may have been pruned, or never kept.
    bool mayLackEventsSince(Date date) const;

    /// What `append` adds to `events` when `to` follows `from`.
    static std::vector<Event> eventsBetween(const Snapshot& from, const Snapshot& to);

    bool operator==(const Journal&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"schemaVersion", &Journal::schemaVersion},
            Field{"snapshots", &Journal::snapshots},
            Field{"events", &Journal::events},
            Field{"baselines", &Journal::baselines},
            Field{"lastChecked", &Journal::lastChecked},
            Field{"importedInstallations", &Journal::importedInstallations},
            Field{"initialHistoryImportCompletedAt", &Journal::initialHistoryImportCompletedAt},
            Field{"eventsPrunedThrough", &Journal::eventsPrunedThrough},
        };
    }

private:
    void dropOldFileNames();
    void pruneEvents();
};

} // namespace tidemark
