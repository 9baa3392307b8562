#include "app/settings/DeveloperSuggestions.h"

#include "core/base/Text.h"

#include <algorithm>
#include <array>

namespace tidemark::developerSuggestions {

namespace {

bool covers(const FolderGrant& grant, const std::string& path) {
    return grant.purposes.contains(FolderPurpose::storage)
           && (path == grant.path || isBelow(path, grant.path));
}

constexpr std::string_view projects = "Project folders, dependencies, and build outputs";

constexpr auto projectLocations = std::to_array<Location>({
    {"Work", "Work", projects},
    {"Projects", "Projects", projects},
    {"Developer", "Developer", projects},
    {"Code", "Code", projects},
});

} // namespace

std::vector<Location> locations() {
    const auto system = systemLocations();
    std::vector<Location> all(system.begin(), system.end());
    all.insert(all.end(), projectLocations.begin(), projectLocations.end());
    return all;
}

std::filesystem::path homeOf(const std::vector<RecommendedFolder>& recommended,
                             const std::filesystem::path& home) {
    for (const auto& folder : recommended)
        if (folder.url.filename() == "Downloads")
            return folder.url.parent_path();
    return home;
}

std::vector<DeveloperFolderSuggestion> found(std::span<const Location> places,
                                             const std::filesystem::path& home,
                                             const std::vector<FolderGrant>& grants,
                                             const IsDirectory& isDirectory) {
    std::vector<DeveloperFolderSuggestion> suggestions;
    for (const auto& place : places) {
        const auto url = home / place.path;
        if (!isDirectory(url))
            continue;
        const std::string path = textFromBytes(url.native());
        suggestions.push_back({std::string(place.title), std::string(place.detail), url,
                               std::ranges::any_of(grants, [&](const FolderGrant& grant) {
                                   return covers(grant, path);
                               })});
    }
    return suggestions;
}

} // namespace tidemark::developerSuggestions
