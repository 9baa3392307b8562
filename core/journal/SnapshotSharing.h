#pragma once

#include "core/records/Snapshot.h"

namespace tidemark::SnapshotSharing {

/// A copy of `snapshot` that shares with `previous` the objects of all equal parts. A new capture
/// has only objects of its own; without this, a recorder that runs for weeks would hold each
/// application, each measured folder and each list of names hundreds of times. Loading a document
/// shares equal parts in the same way (`InternPool`).
Snapshot sharingWith(const Snapshot& previous, Snapshot snapshot);

} // namespace tidemark::SnapshotSharing
