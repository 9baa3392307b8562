#include "core/base/CanonicalPath.h"

namespace tidemark {

std::filesystem::path canonicalPath(const std::filesystem::path& path) {
    std::error_code error;
    auto resolved = std::filesystem::weakly_canonical(path, error);
    if (error)
        resolved = std::filesystem::absolute(path, error).lexically_normal();
    return resolved.has_filename() || resolved.root_path() == resolved ? resolved
                                                                       : resolved.parent_path();
}

} // namespace tidemark
