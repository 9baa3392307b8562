#include "core/system/MountTable.h"

#include "core/base/Text.h"

#include <algorithm>
#include <array>

namespace tidemark {

namespace {

constexpr std::array<std::string_view, 20> networkTypes{
    "9p",
    "afs",
    "ceph",
    "cifs",
    "coda",
    "davfs",
    "fuse.davfs2",
    "fuse.gvfsd-fuse",
    "fuse.glusterfs",
    "fuse.rclone",
    "fuse.sshfs",
    "gfs2",
    "glusterfs",
    "lustre",
    "ncpfs",
    "nfs",
    "nfs4",
    "ocfs2",
    "smb3",
    "smbfs",
};

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> found;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(' '), line.size());
        if (end > 0)
            found.push_back(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return found;
}

bool isOctal(char digit) {
    return digit >= '0' && digit <= '7';
}

} // namespace

std::string unescapedMountField(std::string_view word) {
    std::string text;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] == '\\' && i + 3 < word.size() && isOctal(word[i + 1]) && isOctal(word[i + 2])
            && isOctal(word[i + 3])) {
            text += static_cast<char>((word[i + 1] - '0') * 64 + (word[i + 2] - '0') * 8
                                      + (word[i + 3] - '0'));
            i += 3;
        } else {
            text += word[i];
        }
    }
    return text;
}

bool hasMountOption(std::string_view options, std::string_view sought) {
    while (!options.empty()) {
        const std::size_t end = std::min(options.find(','), options.size());
        if (options.substr(0, end) == sought)
            return true;
        options.remove_prefix(std::min(end + 1, options.size()));
    }
    return false;
}

namespace {

/// Parses a line such as
/// "36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 - ext3 /dev/root rw,errors=continue".
std::optional<MountEntry> entryOf(std::string_view line) {
    const auto fields = words(line);
    const auto separator = std::ranges::find(fields, "-");
    const auto before = separator - fields.begin();
    if (before < 6 || fields.end() - separator < 3)
        return std::nullopt;
    const bool volumeReadOnly = fields.end() - separator > 3 && hasMountOption(separator[3], "ro");
    return MountEntry{
        .device = std::string(fields[2]),
        .mountPoint = unescapedMountField(fields[4]),
        .readOnly = hasMountOption(fields[5], "ro") || volumeReadOnly,
        .type = std::string(separator[1]),
        .source = unescapedMountField(separator[2]),
        .root = unescapedMountField(fields[3]),
    };
}

bool holds(const MountEntry& entry, std::string_view path) {
    return entry.mountPoint == "/" || entry.mountPoint == path || isBelow(path, entry.mountPoint);
}

} // namespace

std::vector<MountEntry> parseMountTable(std::string_view text) {
    std::vector<MountEntry> table;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (auto entry = entryOf(text.substr(0, end)))
            table.push_back(std::move(*entry));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return table;
}

std::optional<MountEntry> mountOf(const std::vector<MountEntry>& table, std::string_view path,
                                  std::string_view device) {
    const MountEntry* best = nullptr;
    for (const auto& entry : table)
        if (holds(entry, path) && (!best || entry.mountPoint.size() >= best->mountPoint.size()))
            best = &entry;
    // A later mount at /a hides an earlier one at /a/b, although that has the longer path. So a
    // mount with the device number of the file is preferred.
    if (best && best->device != device)
        for (const auto& entry : table)
            if (entry.device == device && holds(entry, path))
                best = &entry;
    return best ? std::optional(*best) : std::nullopt;
}

bool isNetworkFileSystem(std::string_view type) {
    return std::ranges::find(networkTypes, type) != networkTypes.end();
}

} // namespace tidemark
