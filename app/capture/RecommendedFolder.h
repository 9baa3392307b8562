#pragma once

#include "app/capture/FolderGrant.h"
#include "core/system/SystemFacts.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tidemark {

/// A folder that is worth observing on most machines.
struct RecommendedFolder {
    std::string title;
    std::filesystem::path url;
    FolderPurpose purpose = FolderPurpose::storage;

    /// In the order in which they are offered.
    static std::vector<RecommendedFolder>
    current(const std::filesystem::path& home = SystemFacts::homeDirectory());
};

} // namespace tidemark
