#pragma once

#include "core/capture/BackgroundCollector.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tidemark {

/// What one capture looks at.
struct ObservationOptions {
    /// Folders searched for applications.
    std::vector<std::filesystem::path> applicationRoots;
    /// Folders of service definitions.
    std::vector<BackgroundRoot> backgroundRoots;
    /// Folders whose size is measured.
    std::vector<std::filesystem::path> storageRoots;

    /// The places of the system and of the user's own home, for what is not given.
    explicit ObservationOptions(std::optional<std::vector<std::filesystem::path>> applications = {},
                                std::optional<std::vector<BackgroundRoot>> background = {},
                                std::vector<std::filesystem::path> storage = {});

    bool operator==(const ObservationOptions&) const = default;
};

} // namespace tidemark
