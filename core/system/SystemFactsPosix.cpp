// What every POSIX system answers alike.

#include "core/system/SystemFacts.h"

#include <cstdlib>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace tidemark::SystemFacts {

std::filesystem::path homeDirectory() {
    std::vector<char> buffer(16'384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found
        && found->pw_dir && *found->pw_dir)
        return found->pw_dir;
    // A user without an entry, as in some containers.
    const char* home = std::getenv("HOME");
    return home && *home ? home : "/";
}

} // namespace tidemark::SystemFacts
