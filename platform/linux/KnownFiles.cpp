#include "platform/linux/KnownFiles.h"

#include <functional>

namespace tidemark {

bool KnownFiles::note(std::string_view path) {
    const std::uint64_t digest = std::hash<std::string_view>()(path);
    if (seen.contains(digest))
        return true;
    if (seen.size() + inRound.size() < mostFiles)
        inRound.insert(digest);
    return false;
}

} // namespace tidemark
