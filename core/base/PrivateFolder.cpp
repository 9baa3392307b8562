#include "core/base/PrivateFolder.h"

#include "core/base/Error.h"
#include "core/base/Text.h"

#include <cerrno>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace tidemark {

bool isPrivateFolder(const std::filesystem::path& folder) {
    struct stat status{};
    return ::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
           && status.st_uid == ::geteuid() && (status.st_mode & 077U) == 0;
}

void requirePrivateFolder(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        throw Error(textFromBytes(folder.native())
                    + " could not be created: " + std::strerror(errno) + ".");
    if (!isPrivateFolder(folder))
        throw Error(textFromBytes(folder.native()) + " is not private to this user.");
}

} // namespace tidemark
