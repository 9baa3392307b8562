#pragma once

#include "core/base/MachineFiles.h"
#include "core/capture/InventoryRoots.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tidemark {

/// The folders that one capture reads.
struct ObservationOptions {
    /// Folders searched for applications.
    std::vector<ApplicationRoot> applicationRoots;
    /// Folders of service definitions.
    std::vector<BackgroundRoot> backgroundRoots;
    /// Folders whose size is measured.
    std::vector<std::filesystem::path> storageRoots;
    /// The machine whose applications and services are read. Sizes are measured on the machine that
    /// the program runs on.
    MachineFiles machine;

    /// Where `applications` or `background` is absent, uses the standard folders of the system and
    /// of the user's home. All of these are folders of `machine`.
    explicit ObservationOptions(std::optional<std::vector<ApplicationRoot>> applications = {},
                                std::optional<std::vector<BackgroundRoot>> background = {},
                                std::vector<std::filesystem::path> storage = {},
                                MachineFiles machine = {});

    bool operator==(const ObservationOptions&) const = default;
};

} // namespace tidemark
