#pragma once

#include "core/records/Snapshot.h"

namespace tidemark::SnapshotSharing {

/// `snapshot`, with every part that `previous` holds as well taken from there: what a load of
/// both would share. Without it a recorder that runs for weeks would hold each application, each
/// measured folder and each list of names hundreds of times.
Snapshot sharingWith(const Snapshot& previous, Snapshot snapshot);

} // namespace tidemark::SnapshotSharing
