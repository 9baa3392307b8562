#pragma once

#include "core/base/Arithmetic.h"
#include "core/records/FolderSize.h"

#include <string>
#include <vector>

namespace tidemark {

/// The sizes of one child of a folder before and after, in bytes.
struct StorageContribution {
    std::string name;
    std::int64_t before = 0;
    std::int64_t after = 0;

    std::int64_t delta() const { return saturatingDifference(after, before); }
    bool operator==(const StorageContribution&) const = default;
};

/// Which children contributed to the change between two sizes of one folder.
struct StorageBreakdown {
    /// The children that changed most, the largest change first, ties by name; empty unless
    /// `isAvailable`.
    std::vector<StorageContribution> contributions;
    /// The change of the folder less that of the `contributions`, in bytes; 0 unless `isAvailable`.
    std::int64_t otherDelta = 0;
    /// See `available`.
    bool isAvailable = false;

    /// Keeps the first `limit` contributions; a negative limit counts as 0.
    StorageBreakdown(const FolderSize& before, const FolderSize& after, std::int64_t limit);

    bool operator==(const StorageBreakdown&) const = default;

    /// False when either side has a size but no known parts, so that it is not known what changed
    /// inside.
    static bool available(const FolderSize& before, const FolderSize& after);
};

} // namespace tidemark
