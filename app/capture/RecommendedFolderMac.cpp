#include "app/capture/RecommendedFolder.h"

namespace tidemark {

std::vector<RecommendedFolder> RecommendedFolder::current(const std::filesystem::path& home) {
    return ofMac(home);
}

} // namespace tidemark
