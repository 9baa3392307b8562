#pragma once

#include "core/base/Calendar.h"
#include "core/growth/StorageSeries.h"
#include "core/records/Snapshot.h"

#include <vector>

namespace tidemark {

/// The sizes of ten years, with one point for each day: one object in memory, and one stored
/// document. The journal keeps whole snapshots, of a few weeks at the usual schedule; this keeps
/// only the last complete measurement of each day for free space, each measured folder and its
/// largest children. Series are immutable and shared, so that a copy copies only pointers.
struct StorageHistory {
    static constexpr std::int64_t supportedVersion = 1;
    /// A point is dropped when it is older than the newest one by more than this.
    static constexpr double secondsKept = 10 * 366.0 * 86'400;
    /// The number of children of a folder, the largest ones, that get a series.
    static constexpr std::size_t childLimit = 6;
    /// A child that has a series gets further points while it is one of this many largest children.
    /// Otherwise two children of about the same size could alternate: one would get a point on one
    /// day, the other on the next.
    static constexpr std::size_t keptChildLimit = 12;
    /// The most series of children. When there are more, those that ended first are dropped.
    static constexpr std::size_t seriesLimit = 2'000;

    std::int64_t schemaVersion = supportedVersion;
    /// All series, in the order in which they began.
    std::vector<Shared<StorageSeries>> series;

    /// Adds the complete sizes of a capture. A size replaces an earlier one of the same local day.
    /// A capture can repeat an earlier measurement; one that is older than the last point of its
    /// series is ignored. Points that are dated after the capture itself come from a time at which
    /// the clock was ahead, and are dropped.
    void record(const Snapshot& snapshot, const Calendar& calendar);

    /// Adds the snapshots that are as late as the newest point or later. The last snapshot of the
    /// list is the latest capture. Snapshots and points that are dated after it come from a time at
    /// which the clock was ahead: such snapshots are not added, and such points are dropped.
    /// Returns false when nothing has changed.
    bool catchUp(const std::vector<Shared<Snapshot>>& snapshots, const Calendar& calendar);

    bool operator==(const StorageHistory&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"schemaVersion", &StorageHistory::schemaVersion},
            Field{"series", &StorageHistory::series},
        };
    }
};

} // namespace tidemark
