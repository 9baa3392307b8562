#include "platform/linux/UserVolumes.h"

#include "core/base/Error.h"
#include "core/base/Files.h"
#include "core/base/Text.h"
#include "core/system/SystemFacts.h"

#include <algorithm>
#include <array>

#include <pwd.h>
#include <unistd.h>

namespace tidemark::userVolumes {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostBytes = 1 << 24;

/// File systems that are never a volume.
constexpr auto systemTypes = std::to_array<std::string_view>({
    "autofs",        "binfmt_misc",
    "bpf",           "cgroup",
    "cgroup2",       "configfs",
    "cpuset",        "debugfs",
    "devfs",         "devpts",
    "devtmpfs",      "ecryptfs",
    "efivarfs",      "fuse.gvfsd-fuse",
    "fuse.lxcfs",    "fuse.portal",
    "fuse.snapfuse", "fusectl",
    "hugetlbfs",     "kernfs",
    "linprocfs",     "linsysfs",
    "mqueue",        "nsfs",
    "overlay",       "proc",
    "procfs",        "pstore",
    "ramfs",         "rootfs",
    "rpc_pipefs",    "securityfs",
    "selinuxfs",     "sysfs",
    "tmpfs",         "tracefs",
});

/// File systems with subvolumes. For the mount of one, the kernel's table has its path as the root,
/// as it has the path of a folder that is mounted alone.
constexpr auto typesWithSubvolumes = std::to_array<std::string_view>({"btrfs", "zfs"});

std::vector<std::string_view> parts(std::string_view text, char separator) {
    std::vector<std::string_view> found;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        found.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return found;
}

template <std::size_t count>
bool contains(const std::array<std::string_view, count>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

bool hasHiddenComponent(const fs::path& path) {
    return std::ranges::any_of(
        path, [](const fs::path& component) { return component.native().starts_with('.'); });
}

bool isAnywhereBelow(const fs::path& path, const fs::path& folder) {
    return isBelow(path.native(), folder.native());
}

/// Where desktops and people mount volumes.
bool isAtPlaceOfVolumes(const fs::path& point, const User& user) {
    if (isAnywhereBelow(point, "/media"))
        return user.canEnter(point.parent_path());
    if (isAnywhereBelow(point, fs::path("/run/media") / user.name) && !user.name.empty())
        return true;
    if (user.home.native().size() > 1 && isAnywhereBelow(point, user.home))
        return true;
    return point.parent_path() == "/mnt";
}

bool isShare(const MountEntry& mount) {
    return isNetworkFileSystem(mount.type) && mount.mountPoint != "/"
           && !isBelow(mount.mountPoint, "/var") && !isBelow(mount.mountPoint, "/run/user");
}

bool isVolume(const MountEntry& mount, std::string_view options, const User& user) {
    // What the administrator chose takes precedence over the rules below.
    if (hasMountOption(options, "x-gvfs-hide"))
        return false;
    if (hasMountOption(options, "x-gvfs-show"))
        return true;
    const bool isPart = mount.root != "/" && !contains(typesWithSubvolumes, mount.type);
    if (contains(systemTypes, mount.type) || isPart)
        return false;
    if (hasHiddenComponent(mount.mountPoint))
        return false;
    return isAtPlaceOfVolumes(mount.mountPoint, user) || isShare(mount);
}

std::string nameOfUser() {
    std::vector<char> buffer(16'384);
    passwd entry{};
    passwd* found = nullptr;
    const bool isKnown =
        ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found;
    return isKnown ? found->pw_name : "";
}

} // namespace

UserOptions parseUserOptions(std::string_view text) {
    UserOptions options;
    for (const auto line : parts(text, '\n')) {
        std::string target;
        std::string list;
        for (const auto field : parts(line, ' ')) {
            if (field.starts_with("TARGET="))
                target = unescapedMountField(field.substr(7));
            else if (field.starts_with("OPTS="))
                list = unescapedMountField(field.substr(5));
        }
        if (!target.empty())
            options[target] = list;
    }
    return options;
}

std::vector<fs::path> among(const std::vector<MountEntry>& table, const UserOptions& options,
                            const User& user) {
    // Of several mounts at one place, only the last is visible.
    std::map<std::string, const MountEntry*> visible;
    for (const auto& mount : table)
        visible[mount.mountPoint] = &mount;
    std::vector<fs::path> volumes;
    for (const auto& [point, mount] : visible) {
        const auto known = options.find(point);
        if (isVolume(*mount, known == options.end() ? "" : known->second, user))
            volumes.emplace_back(point);
    }
    return volumes;
}

std::optional<std::vector<fs::path>> read(const Tables& tables) {
    std::string table;
    std::string options;
    try {
        table = readFile(tables.mounts, mostBytes);
    } catch (const FileError&) {
        return std::nullopt;
    }
    try {
        options = readFile(tables.options, mostBytes);
    } catch (const FileError&) {
        // The table exists only where libmount needs it.
    }
    const User user{
        .home = SystemFacts::homeDirectory(),
        .name = nameOfUser(),
        .canEnter = [](const fs::path& folder) { return ::access(folder.c_str(), X_OK) == 0; }};
    return among(parseMountTable(table), parseUserOptions(options), user);
}

} // namespace tidemark::userVolumes
