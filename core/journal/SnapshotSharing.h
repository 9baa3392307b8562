#pragma once

#include "core/records/Snapshot.h"

namespace tidemark::SnapshotSharing {

/// `snapshot` with every part that equals one in `previous` replaced by that object, as loading
/// both from a document does. Without this, a recorder that runs for weeks would hold each
/// application, each measured folder and each list of names hundreds of times.
Snapshot sharingWith(const Snapshot& previous, Snapshot snapshot);

} // namespace tidemark::SnapshotSharing
