#pragma once

#include "core/records/Snapshot.h"

namespace tidemark {

/// A node of the tree that the inspector shows of a measured folder, made of what a snapshot
/// recorded. Sizes are bytes.
struct FolderInspectionNode {
    /// Identity of the node. A file group's ends in a NUL character and "direct-files", which no
    /// path on disk can.
    std::string path;
    std::string name;
    /// Absent while no complete size is known.
    std::optional<std::int64_t> bytes;
    std::optional<Date> measuredAt;
    /// Why the size is missing or partial.
    std::optional<std::string> issue;
    /// Absent when nothing is known of what lies below.
    std::optional<std::vector<FolderInspectionNode>> children;
    /// True when `children` lists all that is there, so that what it lacks is known to be absent.
    bool childrenComplete = false;
    /// Where `bytes` is absent: the sum of what is measured.
    std::optional<std::int64_t> recordedSubtotal;
    /// The node stands for a folder's own files.
    bool isFileGroup = false;

    static FolderInspectionNode recorded(const FolderSize& size);
    /// What `snapshot` knows of the storage root at the path `root`, be it a report by child
    /// folder, a size, or the sizes of the applications in it.
    static FolderInspectionNode recorded(const std::string& root, const Snapshot& snapshot);

    bool operator==(const FolderInspectionNode&) const = default;
};

} // namespace tidemark
