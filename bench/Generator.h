#pragma once

#include "core/journal/Journal.h"

namespace tidemark::bench {

/// How much of one snapshot is the same as in the one before.
enum class Sharing {
    /// As on a real machine: a few applications are updated, folder sizes move.
    realistic,
    /// Nothing at all: each application and each background item is another in each snapshot.
    none,
};

/// A journal at its limits: 720 snapshots of 250 applications, 60 background items with
/// fingerprints and 12 folders with 60 children each, and 10,000 events; about 70 MB as JSON.
Journal journalAtItsLimits(Sharing sharing = Sharing::realistic);

/// What 720 captures of four folders as they are on a Linux machine leave (9 to 117 subfolders,
/// up to 66 files of their own): every subfolder is measured anew each time, one in a hundred has
/// changed. Taken over by `Journal::append`, as a recorder does; about 120 MB as JSON.
Journal journalOfRealFolders();

/// What 720 captures leave of one folder with this many files of its own and no subfolder. With
/// `changing` one file has another size each time.
Journal journalOfFiles(std::size_t files, bool changing);

/// One capture of each of these; `generation` counts the captures.
Snapshot captureOfRealFolders(std::size_t generation);
Snapshot captureOfFiles(std::size_t files, bool changing, std::size_t generation);

/// One snapshot with this many of each; `generation` moves sizes and versions.
Snapshot snapshotOf(std::size_t applications, std::size_t backgroundItems, std::size_t folders,
                    std::size_t childrenEach, std::size_t generation,
                    Sharing sharing = Sharing::realistic);

/// Events of all kinds, newest first, some minutes apart.
std::vector<Shared<Event>> eventsOf(std::size_t count);

} // namespace tidemark::bench
