#include "cli/OutputFile.h"

#include "core/base/Files.h"
#include "recorder/OwnFiles.h"

namespace tidemark {

std::filesystem::path writableFile(const std::filesystem::path& given) {
    auto path = replaceablePath(given);
    ownFiles::refuse(path);
    const FileReplacement probe(path);
    return path;
}

} // namespace tidemark
