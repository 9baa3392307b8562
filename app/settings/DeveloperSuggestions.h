#pragma once

#include "app/capture/FolderGrant.h"
#include "app/capture/RecommendedFolder.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// A folder in which developers often have much data. Its identity is the path.
struct DeveloperFolderSuggestion {
    std::string title;
    std::string detail;
    std::filesystem::path url;
    /// True when it is, or lies in, a folder whose storage is monitored already; it can't be
    /// selected then.
    bool isCovered = false;

    bool operator==(const DeveloperFolderSuggestion&) const = default;
};

namespace developerSuggestions {

inline constexpr std::string_view heading = "Developer Folders";
inline constexpr std::string_view explanation =
    "Suggested locations found on this Mac. Select the ones you want to monitor.";
inline constexpr std::string_view monitorSelected = "Monitor Selected";
inline constexpr std::string_view covered = "Already covered by your monitored folders";
inline constexpr std::string_view none =
    "No common developer folders found. Use Add Additional Folders for a project elsewhere.";

/// A place below the home directory.
struct Location {
    std::string_view title;
    std::string_view path;
    std::string_view detail;
};
/// In the order in which they are offered: those of this system, then folders of projects.
std::vector<Location> locations();
/// Where the tools of this system keep their data by default. One source file per system.
std::span<const Location> systemLocations();

using IsDirectory = std::function<bool(const std::filesystem::path&)>;

/// The home directory: the parent of the recommended "Downloads", else `home`.
std::filesystem::path homeOf(const std::vector<RecommendedFolder>& recommended,
                             const std::filesystem::path& home);

/// Those of `places` that are directories. `isDirectory` reads the disk, so call this function
/// in the background.
std::vector<DeveloperFolderSuggestion> found(std::span<const Location> places,
                                             const std::filesystem::path& home,
                                             const std::vector<FolderGrant>& grants,
                                             const IsDirectory& isDirectory);

} // namespace developerSuggestions

} // namespace tidemark
