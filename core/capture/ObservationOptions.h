#pragma once

#include "core/capture/BackgroundCollector.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tidemark {

/// The folders that one capture reads.
struct ObservationOptions {
    /// Folders searched for applications.
    std::vector<std::filesystem::path> applicationRoots;
    /// Folders of service definitions.
    std::vector<BackgroundRoot> backgroundRoots;
    /// Folders whose size is measured.
    std::vector<std::filesystem::path> storageRoots;

    /// Uses the standard folders of the system and of the user's home for those that are absent.
    explicit ObservationOptions(std::optional<std::vector<std::filesystem::path>> applications = {},
                                std::optional<std::vector<BackgroundRoot>> background = {},
                                std::vector<std::filesystem::path> storage = {});

    bool operator==(const ObservationOptions&) const = default;
};

} // namespace tidemark
