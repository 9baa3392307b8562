#include "app/settings/DeveloperSuggestions.h"

#include <array>

namespace tidemark::developerSuggestions {

namespace {

/// Where package managers, containers and caches keep their data by default. The environment
/// variables that can move these folders (XDG Base Directories) are not read.
constexpr auto places = std::to_array<Location>({
    {"Caches", ".cache", "Caches across applications; changes reported at folder thresholds"},
    {"Container Data", ".local/share/containers",
     "Container images and volumes; logical size can exceed allocated storage"},
    {"Docker Data", ".local/share/docker",
     "Docker disk images; logical size can exceed allocated storage"},
});

} // namespace

std::span<const Location> systemLocations() {
    return places;
}

} // namespace tidemark::developerSuggestions
