#pragma once

#include "core/storage/FolderInspectionNode.h"

namespace tidemark {

/// One line of a comparison of two folders.
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

/// The children of both nodes side by side, the largest change first. What one side lacks counts
/// as 0 bytes there when that side is known to list everything, else as unknown, which also all
/// is of a null side.
std::vector<FolderInspectionRow> rows(const FolderInspectionNode* before,
                                      const FolderInspectionNode* after);

} // namespace FolderInspection

} // namespace tidemark
