#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// One line of the kernel's mount table, proc_pid_mountinfo(5).
struct MountEntry {
    /// "major:minor" of what `stat` reports for files on it.
    std::string device;
    std::string mountPoint;
    bool readOnly = false;
    /// Such as "ext4".
    std::string type;
    /// The device or server behind it, such as "/dev/sda1".
    std::string source;

    bool operator==(const MountEntry&) const = default;
};

/// The table of a text as the kernel writes it; lines that are none are passed over.
std::vector<MountEntry> parseMountTable(std::string_view text);

/// The entry that holds the canonical path `path` with the device number `device`: the deepest
/// mount point above it, the latest of two on the same place.
std::optional<MountEntry> mountOf(const std::vector<MountEntry>& table, std::string_view path,
                                  std::string_view device);

/// True for file systems whose files lie on another machine.
bool isNetworkFileSystem(std::string_view type);

} // namespace tidemark
