#pragma once

#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <optional>
#include <vector>

namespace tidemark {

/// The whole observed history, as one value and one stored document. Hundreds of snapshots repeat
/// nearly the same content, and each capture works on a copy of the journal that replaces the
/// original once it is on disk. So snapshots and events are immutable and shared: copying a journal
/// copies only pointers, and equal parts of snapshots are one object. The limits below are applied
/// by `append`.
struct Journal {
    static constexpr std::int64_t supportedVersion = 1;
    static constexpr std::size_t snapshotLimit = 720;
    static constexpr std::size_t eventLimit = 10'000;
    /// How many of the newest snapshots keep the names of the files directly in a folder. The names
    /// take by far the most space and are used only by the latest comparison.
    static constexpr std::size_t snapshotsWithFileNames = 2;
    /// An event keeps the file names of a folder only if there are at most this many.
    static constexpr std::size_t eventFileNameLimit = 2'000;

    std::int64_t schemaVersion = supportedVersion;
    /// Oldest first.
    std::vector<Shared<Snapshot>> snapshots;
    /// In order of creation.
    std::vector<Shared<Event>> events;
    /// Named snapshots. Each holds its snapshot itself and is never pruned.
    std::vector<Baseline> baselines;
    /// Not used; kept as it was read.
    std::optional<Date> lastChecked;
    /// Imported from the installation log of the operating system, oldest first. Not part of
    /// `events`.
    std::optional<std::vector<InstallationRecord>> importedInstallations;
    std::optional<Date> initialHistoryImportCompletedAt;
    /// The latest timestamp of all events that were ever pruned.
    std::optional<Date> eventsPrunedThrough;

    /// Adds a capture. With `comparingPrevious`, adds the events for its differences from the last
    /// snapshot, then an event if captures resumed after a gap. Drops the oldest snapshots and
    /// events beyond the limits, and the file names in all but the newest snapshots. Equal parts of
    /// the new and the last snapshot become shared.
    void append(Shared<Snapshot> snapshot, bool comparingPrevious);

    /// Drops the oldest quarter of the snapshots, but never the newest two: they were compared
    /// last, and the next comparison needs the newer one. False when there is none to drop.
    bool dropOldestSnapshots();

    /// Merges records by their id, oldest first; returns how many were new.
    std::size_t importInstallations(const std::vector<InstallationRecord>& records);

    /// The events of the imported installations. They are made on each call, not stored, and no
    /// limit applies to them.
    std::vector<Shared<Event>> installationEvents() const;

    /// True when events later than `date` may have been pruned.
    bool mayLackEventsSince(Date date) const;

    /// The events that `append` adds when `to` is captured after `from`.
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
