#include "app/settings/DeveloperSuggestions.h"

#include <array>

namespace tidemark::developerSuggestions {

namespace {

constexpr auto places = std::to_array<Location>({
    {"Developer Data", "Library/Developer", "Xcode builds, archives, and simulators"},
    {"Caches", "Library/Caches",
     "Caches across applications; changes reported at folder thresholds"},
    {"Docker Data", "Library/Containers/com.docker.docker/Data/vms",
     "Docker disk images; logical size can exceed allocated storage"},
});

} // namespace

std::span<const Location> systemLocations() {
    return places;
}

} // namespace tidemark::developerSuggestions
