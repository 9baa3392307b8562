#pragma once

#include "core/journal/Journal.h"

namespace tidemark::bench {

/// How much of a snapshot equals the one before.
enum class Sharing {
    /// As on a real machine: a few applications are updated, folder sizes change.
    realistic,
    /// Nothing: each application and each background item differs in each snapshot.
    none,
};

/// A journal at its limits: 720 snapshots of 250 applications, 60 background items with
/// fingerprints and 12 folders with 60 children each, and 10,000 events; about 70 MB as JSON.
Journal journalAtItsLimits(Sharing sharing = Sharing::realistic);

/// A journal of 720 captures of four realistic folders (9 to 117 subfolders, up to 66 files of
/// their own), added by `Journal::append`. Every subfolder is measured again each time; one in a
/// hundred has changed. About 120 MB as JSON.
Journal journalOfRealFolders();

/// A journal of 720 captures of one folder with this many files and no subfolder. With `changing`,
/// one file has another size each time.
Journal journalOfFiles(std::size_t files, bool changing);

/// Capture number `generation` of the folders in `journalOfRealFolders`.
Snapshot captureOfRealFolders(std::size_t generation);
Snapshot captureOfFiles(std::size_t files, bool changing, std::size_t generation);

/// One snapshot with this many of each; sizes and versions depend on `generation`.
Snapshot snapshotOf(std::size_t applications, std::size_t backgroundItems, std::size_t folders,
                    std::size_t childrenEach, std::size_t generation,
                    Sharing sharing = Sharing::realistic);

/// The events of the changes between two snapshots, repeated until there are `count`; newest first,
/// some minutes apart.
std::vector<Shared<Event>> eventsOf(std::size_t count);

} // namespace tidemark::bench
