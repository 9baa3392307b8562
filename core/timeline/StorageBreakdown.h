#pragma once

#include "core/base/Arithmetic.h"
#include "core/records/FolderSize.h"

#include <string>
#include <vector>

namespace tidemark {

/// How much one child of a folder had before and after, in bytes.
struct StorageContribution {
    std::string name;
    std::int64_t before = 0;
    std::int64_t after = 0;

    std::int64_t delta() const { return saturatingDifference(after, before); }
    bool operator==(const StorageContribution&) const = default;
};

/// What contributed to the change between two sizes of one folder.
struct StorageBreakdown {
    /// The children that changed, the largest change first, ties by name.
    std::vector<StorageContribution> contributions;
    /// The part of the change that `contributions` do not explain.
    std::int64_t otherDelta = 0;
    /// False when one side has a size of which no parts are known.
    bool isAvailable = false;

    /// Keeps the first `limit` contributions; a negative limit counts as 0.
    StorageBreakdown(const FolderSize& before, const FolderSize& after, std::int64_t limit);

    bool operator==(const StorageBreakdown&) const = default;

    /// False when one side has a size of which no parts are known, so that nothing can be said
    /// of what changed inside.
    static bool available(const FolderSize& before, const FolderSize& after);
};

} // namespace tidemark
