#include "app/capture/BookmarkOperations.h"

#include "core/base/Error.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"

#include <cerrno>

#include <dirent.h>
#include <sys/stat.h>

namespace tidemark {

namespace {

struct DirectBookmark {
    /// As data, since a name on disk may be any bytes.
    Data path;
    std::int64_t device = 0;
    std::int64_t inode = 0;

    static constexpr auto fields() {
        return std::tuple{
            Field{"path", &DirectBookmark::path},
            Field{"device", &DirectBookmark::device},
            Field{"inode", &DirectBookmark::inode},
        };
    }
};

/// Empty where nothing can be looked at; `errno` says why.
std::optional<DirectBookmark> bookmarkOf(const std::filesystem::path& folder) {
    struct stat status{};
    if (::stat(folder.c_str(), &status) != 0)
        return std::nullopt;
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return std::nullopt;
    }
    return DirectBookmark{{folder.native()},
                          static_cast<std::int64_t>(status.st_dev),
                          static_cast<std::int64_t>(status.st_ino)};
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
    // Where a link took its place, the folder that was chosen is not there: made anew, the
    // bookmark would be of wherever the link leads.
    struct stat status{};
    if (::lstat(folder.c_str(), &status) == 0 && S_ISLNK(status.st_mode))
        throw Error("A link has taken the place of the folder.");
    const auto current = bookmarkOf(folder);
    const bool stale =
        current && (current->device != stored.device || current->inode != stored.inode);
    return {folder, stale};
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

} // namespace tidemark
