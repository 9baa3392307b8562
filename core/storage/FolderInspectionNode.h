#pragma once

#include "core/records/Snapshot.h"

namespace tidemark {

/// A node of the tree that the inspector shows for a measured folder. It is made from what a
/// snapshot recorded, because the inspector also shows earlier states, which are no longer on disk.
/// Sizes are bytes.
struct FolderInspectionNode {
    /// Identity of the node. That of a group of files ends with a NUL and "direct-files", so that
    /// it equals no path on disk.
    std::string path;
    std::string name;
    /// Absent when no complete size is known.
    std::optional<std::int64_t> bytes;
    std::optional<Date> measuredAt;
    /// Why the size is missing, partial or not the latest, or what it does not include.
    std::optional<std::string> issue;
    /// Absent when nothing is known of the contents.
    std::optional<std::vector<FolderInspectionNode>> children;
    /// True when `children` is complete, so that anything not in it is known to be absent.
    bool childrenComplete = false;
    /// The sum of the known sizes in a storage root whose `bytes` is absent.
    std::optional<std::int64_t> recordedSubtotal;
    /// True for a node that stands for all files directly in a folder.
    bool isFileGroup = false;

    static FolderInspectionNode recorded(const FolderSize& size);
    /// The node of the storage root at the path `root`, from whatever `snapshot` has for it: a
    /// report by child folder, a size, or the sizes of the applications in it.
    static FolderInspectionNode recorded(const std::string& root, const Snapshot& snapshot);

    bool operator==(const FolderInspectionNode&) const = default;
};

} // namespace tidemark
