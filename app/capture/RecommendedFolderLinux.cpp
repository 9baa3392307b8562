#include "app/capture/RecommendedFolder.h"

namespace tidemark {

std::vector<RecommendedFolder> RecommendedFolder::current(const std::filesystem::path& home) {
    return ofLinux(home);
}

} // namespace tidemark
