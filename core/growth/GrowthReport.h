#pragma once

#include "core/growth/GrowthSource.h"
#include "core/timeline/StorageBreakdown.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A size at one end of a period.
struct DatedSize {
    std::int64_t bytes = 0;
    Date measuredAt;

    bool operator==(const DatedSize&) const = default;
};

/// One folder or application, and how its size changed.
struct GrowthItem {
    enum class Kind { folder, application };
    /// `appeared`: an application that is new; `gone`: one that was removed. Folders are neither,
    /// since it is not known whether a folder existed when it was not monitored.
    enum class State { changed, appeared, gone };
    static constexpr std::size_t partLimit = 5;

    Kind kind = Kind::folder;
    State state = State::changed;
    std::string path;
    std::string name;
    /// Absent for an item that has appeared, and where the size is not known.
    std::optional<DatedSize> before{};
    /// Absent for an item that was removed, and where the size is not known.
    std::optional<DatedSize> after{};
    /// Its part of the total growth in the list or, for an item that shrank, of the total
    /// shrinkage; from 0 to 1. An item inside of another one has a share as well, but the total
    /// counts it only once.
    double share = 0;
    /// The children that changed most, at most `partLimit`; empty where they are not known.
    std::vector<StorageContribution> parts{};

    /// Bytes; positive for growth, 0 when a size that it needs is not known.
    std::int64_t change() const;
    bool operator==(const GrowthItem&) const = default;
};

/// What became larger and smaller in a period, as far as sizes are known at both ends: free space,
/// monitored folders, and applications. Sizes are logical bytes, as everywhere in the program; what
/// files take on the disk can differ.
struct GrowthReport {
    static constexpr std::string_view title = "What Grew";

    Date since;
    Date through;
    /// Free space of one volume at both ends.
    std::optional<DatedSize> freeBefore{};
    std::optional<DatedSize> freeAfter{};
    /// Why free space can't be compared, as a sentence; empty when it can.
    std::string freeProblem{};
    /// The largest change first, ties by path. Items without a change are left out, but not
    /// applications that appeared or were removed, even if their size is not known.
    std::vector<GrowthItem> items{};
    /// The sum of the changes of all monitored folders that have comparable sizes at both ends,
    /// with nothing counted twice; absent when there is no such folder.
    std::optional<std::int64_t> monitoredChange{};
    /// Names of the monitored folders without comparable sizes at both ends. They are not part of
    /// `monitoredChange`.
    std::vector<std::string> unknownFolders{};

    /// Compares, for each item, the last measurement at or before `since`, or else the first one
    /// after it, with the last one up to `through`. Measurements of folders and of free space count
    /// only from two days before `since` on. Each item has the times of its own measurements. A
    /// pure function.
    static GrowthReport of(const GrowthSource& source, Date since, Date through);

    bool operator==(const GrowthReport&) const = default;
};

} // namespace tidemark
