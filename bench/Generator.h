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

/// One snapshot with this many of each; `generation` moves sizes and versions.
Snapshot snapshotOf(std::size_t applications, std::size_t backgroundItems, std::size_t folders,
                    std::size_t childrenEach, std::size_t generation,
                    Sharing sharing = Sharing::realistic);

/// Events of all kinds, newest first, some minutes apart.
std::vector<Shared<Event>> eventsOf(std::size_t count);

} // namespace tidemark::bench
