#include "app/capture/RecommendedFolder.h"

namespace tidemark {

std::vector<RecommendedFolder> RecommendedFolder::current(const std::filesystem::path& home) {
    using enum FolderPurpose;
    return {
        {"Applications", "/Applications", applications},
        {"Downloads", home / "Downloads", storage},
        {"Developer", home / "Library/Developer", storage},
        {"Trash", home / ".Trash", storage},
        {"Your background agents", home / "Library/LaunchAgents", launchAgents},
        {"System background agents", "/Library/LaunchAgents", launchAgents},
        {"System background daemons", "/Library/LaunchDaemons", launchDaemons},
    };
}

} // namespace tidemark
