#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// One line of the kernel's mount table, proc_pid_mountinfo(5).
struct MountEntry {
    /// The device number that stat(2) reports for its files, as "major:minor".
    std::string device;
    std::string mountPoint;
    bool readOnly = false;
    /// Such as "ext4".
    std::string type;
    /// The device or server behind it, such as "/dev/sda1".
    std::string source;
    /// The folder of that file system which is mounted: "/" unless it is a bind mount of a folder
    /// or a subvolume.
    std::string root = "/";

    bool operator==(const MountEntry&) const = default;
};

/// Parses the text of the kernel; skips lines in another format.
std::vector<MountEntry> parseMountTable(std::string_view text);

/// A field of a mount table as bytes: blanks, tabs, line feeds and backslashes are written as three
/// octal digits there.
std::string unescapedMountField(std::string_view field);

/// Whether a list such as "rw,noatime" contains an option.
bool hasMountOption(std::string_view options, std::string_view sought);

/// The mount that contains the file at the canonical path `path`; absent when the table has none at
/// or above it. Of those it is the one with the longest mount point, the latest if there are
/// several. If its device number is not `device`, that of the file, it is the latest with this
/// number instead, if there is one.
std::optional<MountEntry> mountOf(const std::vector<MountEntry>& table, std::string_view path,
                                  std::string_view device);

/// True for file systems whose files are on another machine.
bool isNetworkFileSystem(std::string_view type);

} // namespace tidemark
