#pragma once

#include <filesystem>
#include <vector>

namespace tidemark {

/// The places of the additional observations: formulas, crash reports and configuration files. One
/// source file per system.
struct AdditionalPlaces {
    /// The folders in which Homebrew keeps what it installed.
    std::vector<std::filesystem::path> cellars;
    /// The folders in which the system keeps reports of crashes.
    std::vector<std::filesystem::path> diagnostics;

    /// The places on this system for the user with this home folder, including folders that don't
    /// exist.
    static AdditionalPlaces standard(const std::filesystem::path& home);

    /// The existing configuration files that are suggested for observation, such as the start files
    /// of shells. Links are left out.
    static std::vector<std::filesystem::path>
    suggestedConfigurations(const std::filesystem::path& home);
};

} // namespace tidemark
