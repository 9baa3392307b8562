#include "app/settings/DeveloperSuggestions.h"

#include <array>

namespace tidemark::developerSuggestions {

namespace {

constexpr std::string_view projects = "Project folders, dependencies, and build outputs";

/// Where package managers, containers and caches keep their data by default; the folders of the
/// XDG Base Directories without their variables.
constexpr auto places = std::to_array<Location>({
    {"Caches", ".cache", "Caches across applications; changes reported at folder thresholds"},
    {"Container Data", ".local/share/containers",
     "Container images and volumes; logical size can exceed allocated storage"},
    {"Docker Data", ".local/share/docker",
     "Docker disk images; logical size can exceed allocated storage"},
    {"Work", "Work", projects},
    {"Projects", "Projects", projects},
    {"Developer", "Developer", projects},
    {"Code", "Code", projects},
});

} // namespace

std::span<const Location> locations() {
    return places;
}

} // namespace tidemark::developerSuggestions
