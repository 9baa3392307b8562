#include "recorder/OwnFiles.h"

#include "app/model/DataFiles.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Error.h"
#include "core/base/Text.h"
#include "core/system/UserFolders.h"

#include <algorithm>
#include <array>

namespace tidemark::ownFiles {

namespace {

/// Compares the identity in the file system, since one folder can have several paths: another
/// letter case, a second mount.
bool isSameFolder(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code error;
    return one == other || std::filesystem::equivalent(one, other, error);
}

} // namespace

bool contain(const std::filesystem::path& file) {
    const std::array own{canonicalPath(UserFolders::data() / DataFiles::folderName),
                         canonicalPath(UserFolders::configuration() / DataFiles::folderName)};
    for (auto place = canonicalPath(file); place.has_relative_path(); place = place.parent_path())
        if (std::ranges::any_of(own, [&](const auto& mine) { return isSameFolder(place, mine); }))
            return true;
    return false;
}

void refuse(const std::filesystem::path& file) {
    if (contain(file))
        throw Error(textFromBytes(file.native())
                    + " lies in a folder where Tidemark keeps its own files; choose another.");
}

} // namespace tidemark::ownFiles
