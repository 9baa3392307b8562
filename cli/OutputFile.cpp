#include "cli/OutputFile.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Files.h"

namespace tidemark {

std::filesystem::path writableFile(const std::filesystem::path& given) {
    auto path = replaceablePath(canonicalPath(given));
    const FileReplacement probe(path);
    return path;
}

} // namespace tidemark
