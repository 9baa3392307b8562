#include "cli/OutputFile.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "recorder/OwnFiles.h"

#include <cerrno>

namespace tidemark {

std::filesystem::path writableFile(const std::filesystem::path& given) {
    auto path = canonicalPath(given);
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path, error);
    if (status.type() == std::filesystem::file_type::none)
        throw FileError(textFromBytes(path.native()) + " could not be written: " + error.message()
                            + ".",
                        error.value());
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw FileError(textFromBytes(path.native()) + " is not a regular file.", EINVAL);
    ownFiles::refuse(path);
    const FileReplacement probe(path);
    return path;
}

} // namespace tidemark
