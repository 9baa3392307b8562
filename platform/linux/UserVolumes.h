#pragma once

#include "core/system/MountTable.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which mounts a user recognises as volumes: disks, images and shares, but not the many mounts
/// that belong to the system, to containers and to packages.
namespace tidemark::userVolumes {

/// Options of mounts that are for programs and not known to the kernel, by mount point: lists such
/// as "x-gvfs-hide".
using UserOptions = std::map<std::string, std::string>;

/// Parses the table of libmount, /run/mount/utab: lines such as "TARGET=/mnt/a OPTS=x-gvfs-hide".
UserOptions parseUserOptions(std::string_view text);

struct User {
    std::filesystem::path home;
    std::string name;
    /// Whether the user may enter a folder.
    std::function<bool(const std::filesystem::path&)> canEnter;
};

/// The mount points of the volumes among the mounts of a table. Follows the rule of the desktops
/// (g_unix_mount_guess_should_display of GLib), with one difference: what is mounted by hand below
/// /mnt and network file systems also count as volumes.
std::vector<std::filesystem::path> among(const std::vector<MountEntry>& table,
                                         const UserOptions& options, const User& user);

/// The files to read: those of this process, or of one in another namespace.
struct Tables {
    std::filesystem::path mounts = "/proc/self/mountinfo";
    /// The table of libmount.
    std::filesystem::path options = "/run/mount/utab";
};

/// The volumes in the tables for the user of this process. Absent when the mounts can't be read.
/// Reads no volume.
std::optional<std::vector<std::filesystem::path>> read(const Tables& tables);

} // namespace tidemark::userVolumes
