#pragma once

#include "core/growth/StorageHistory.h"
#include "core/journal/Journal.h"

namespace tidemark {

/// Everything that charts, lists of what grew and digests are made from. An immutable value that
/// any thread may read; a copy copies pointers.
struct GrowthSource {
    Shared<Journal> journal;
    Shared<StorageHistory> history;
};

} // namespace tidemark
