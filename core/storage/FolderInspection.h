#pragma once

#include "core/storage/FolderInspectionNode.h"

namespace tidemark {

/// One row of a comparison of two folders.
struct FolderInspectionRow {
    /// The path.
    std::string id;
    std::string name;
    std::optional<FolderInspectionNode> before;
    std::optional<FolderInspectionNode> after;
    std::optional<std::int64_t> beforeBytes;
    std::optional<std::int64_t> afterBytes;
};

namespace FolderInspection {

/// The children of both nodes side by side, the largest change first. A child that one side lacks
/// has 0 bytes there if that side lists everything, otherwise its size is unknown. If a node is
/// null, all sizes of its side are unknown.
std::vector<FolderInspectionRow> rows(const FolderInspectionNode* before,
                                      const FolderInspectionNode* after);

} // namespace FolderInspection

} // namespace tidemark
