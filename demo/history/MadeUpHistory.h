#pragma once

#include "core/journal/Journal.h"
#include "core/records/MemoryRecord.h"
#include "core/records/SystemActivity.h"
#include "demo/history/MadeUpMachine.h"

#include <vector>

namespace tidemark::demo {

/// Half a year in the life of a made-up machine, with every kind of event. Two histories with the
/// same end differ only in their identifiers.
struct MadeUpHistory {
    static constexpr int days = 182;

    /// The machine at the end.
    MadeUpMachine machine;
    Journal journal;
    /// Oldest first.
    std::vector<Shared<SystemActivity>> activity;
    std::vector<MemoryRecord> memory;

    static MadeUpHistory endingAt(Date now);
    /// The moment of the day at which the made-up history of the day of `date` ends: in its early
    /// afternoon.
    static Date endOfDay(Date date);
};

} // namespace tidemark::demo
