#pragma once

#include <filesystem>
#include <vector>

namespace tidemark {

/// Where a system keeps what may be observed besides. One source file per system.
struct AdditionalPlaces {
    /// The folders in which Homebrew keeps what it installed.
    std::vector<std::filesystem::path> cellars;
    /// The folders in which the system keeps reports of crashes.
    std::vector<std::filesystem::path> diagnostics;

    /// Those of this system, for the user whose home this is. Folders are named whether they exist
    /// or not.
    static AdditionalPlaces standard(const std::filesystem::path& home);

    /// Configuration files that decide what runs for the user, of those that exist.
    static std::vector<std::filesystem::path>
    suggestedConfigurations(const std::filesystem::path& home);
};

} // namespace tidemark
