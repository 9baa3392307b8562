#include "app/capture/BookmarkOperations.h"

#include "core/base/Error.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"
#include "core/system/SystemFacts.h"

#include <cerrno>

#include <dirent.h>
#include <sys/stat.h>

namespace tidemark {

namespace {

struct DirectBookmark {
    /// Data and not text, since a name on disk can be any bytes.
    Data path;
    std::int64_t device = 0;
    std::int64_t inode = 0;
    /// Whether a volume is mounted there. Device numbers don't show it, since they change with each
    /// start of the machine.
    std::optional<bool> isMountRoot{};

    static constexpr auto fields() {
        return std::tuple{
            Field{"path", &DirectBookmark::path, Private},
            Field{"device", &DirectBookmark::device},
            Field{"inode", &DirectBookmark::inode},
            Field{"isMountRoot", &DirectBookmark::isMountRoot},
        };
    }
};

/// Absent, with `errno` set, when the folder can't be read. Does not follow a link: the user
/// allowed the folder that was there, not the target of a link that replaced it.
std::optional<DirectBookmark> bookmarkOf(const std::filesystem::path& folder) {
    struct stat status{};
    if (::lstat(folder.c_str(), &status) != 0)
        return std::nullopt;
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return std::nullopt;
    }
    return DirectBookmark{{folder.native()},
                          static_cast<std::int64_t>(status.st_dev),
                          static_cast<std::int64_t>(status.st_ino),
                          SystemFacts::isMountRoot(folder)};
}

std::string accessFailure(int code) {
    switch (code) {
    case EPERM:
    case EACCES:
        return "macOS denied folder access to this running copy of Tidemark.";
    case ENOENT:
        return "Folder does not currently exist.";
    case ENOTDIR:
        return "This location is not a folder.";
    default:
        return "The folder could not be opened (system error " + std::to_string(code) + ").";
    }
}

Data createDirect(const std::filesystem::path& folder) {
    const auto bookmark = bookmarkOf(folder);
    if (!bookmark)
        throw Error(accessFailure(errno));
    return {json::encoded(*bookmark)};
}

BookmarkOperations::Resolved resolveDirect(const Data& data) {
    const auto stored = json::decode<DirectBookmark>(data.bytes);
    const std::filesystem::path folder = stored.path.bytes;
    const auto current = bookmarkOf(folder);
    if (!current)
        return {folder, false, accessFailure(errno)};
    if (stored.isMountRoot == true && current->isMountRoot == false)
        return {folder, false, accessFailure(ENOENT)};
    const bool isSame = current->device == stored.device && current->inode == stored.inode;
    return {folder, !isSame, {}};
}

} // namespace

BookmarkOperations BookmarkOperations::direct() {
    return {createDirect, resolveDirect,
            [](const std::filesystem::path& folder) { return !directoryAccessFailure(folder); },
            [](const std::filesystem::path&) {}};
}

std::optional<std::string> directoryAccessFailure(const std::filesystem::path& folder) {
    DIR* directory = ::opendir(folder.c_str());
    if (!directory)
        return accessFailure(errno);
    ::closedir(directory);
    return std::nullopt;
}

std::optional<std::string> bookmarkAccessFailure(const BookmarkOperations& operations,
                                                 const Data& bookmark) {
    try {
        const auto resolved = operations.resolve(bookmark);
        return resolved.failure ? resolved.failure : directoryAccessFailure(resolved.url);
    } catch (const Error& error) {
        return error.what();
    }
}

} // namespace tidemark
