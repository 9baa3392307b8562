// The facts that are read in the same way on every POSIX system.

#include "core/system/SystemFacts.h"

#include <cstdlib>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace tidemark::SystemFacts {

namespace {

/// The folder that getpwuid_r(3) returns; "/" for a user without an entry, as in some containers.
std::string homeInUserDatabase() {
    std::vector<char> buffer(16'384);
    passwd entry{};
    passwd* found = nullptr;
    const bool isKnown =
        ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found;
    return isKnown && found->pw_dir && *found->pw_dir == '/' ? found->pw_dir : "/";
}

std::filesystem::path withoutEndingSlash(std::string path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

} // namespace

std::filesystem::path homeDirectory(const std::optional<std::string>& variable) {
    const bool isAbsolute = variable && variable->starts_with('/');
    return withoutEndingSlash(isAbsolute ? *variable : homeInUserDatabase());
}

std::filesystem::path homeDirectory() {
    const char* home = std::getenv("HOME");
    return homeDirectory(home ? std::optional<std::string>(home) : std::nullopt);
}

} // namespace tidemark::SystemFacts
