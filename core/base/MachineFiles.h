#pragma once

#include "core/base/FileDescriptor.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>

namespace tidemark {

/// The files of a machine: of the one that the program runs on, or of one whose root folder is
/// mounted or unpacked somewhere else, such as an image, a container or a backup.
///
/// All paths here are paths on that machine: "/etc" is the folder "etc" in its root folder. Only
/// what `below` takes and `outside` returns are paths of this process. Links are resolved as that
/// machine would resolve them: an absolute link starts at its root folder, and ".." does not lead
/// above that. When the root folder is mounted or unpacked somewhere else, folders are opened one
/// by one from there, without following links, so that nothing outside of it is opened, even when a
/// folder is replaced by a link meanwhile.
///
/// A value that is cheap to copy and that any thread may use.
class MachineFiles {
public:
    /// The machine that the program runs on.
    MachineFiles() = default;
    /// The machine whose "/" is the folder `root`. Throws `FileError` when that can't be opened.
    static MachineFiles below(const std::filesystem::path& root);

    /// Whether this is another machine than the one that the program runs on.
    bool isElsewhere() const { return static_cast<bool>(top); }

    /// The absolute path with links, "." and ".." resolved and no slash at the end. If the path
    /// does not exist, its existing part is resolved. The same as `canonicalPath` for the machine
    /// that the program runs on.
    std::filesystem::path canonical(const std::filesystem::path& path) const;

    /// Opens the file or folder at a canonical path, with `flags` of open(2); `O_NOFOLLOW` and
    /// `O_CLOEXEC` are added. Without `O_NONBLOCK` this may wait for a FIFO. The error is an
    /// `errno` value: ENOENT when it does not exist, ELOOP or ENOTDIR for a link.
    std::expected<FileDescriptor, int> open(const std::filesystem::path& canonical,
                                            int flags) const;

    /// The bytes of a regular file of at most `limit` bytes, links in its path resolved. Never
    /// waits on a FIFO or a device. Throws `FileError`.
    std::string read(const std::filesystem::path& path, std::size_t limit) const;

    /// The path by which this process opens a file of the machine, for libraries that take only
    /// paths. The links in `canonical` must have been resolved. Unlike `open`, the library would
    /// follow a link that is created later.
    std::filesystem::path outside(const std::filesystem::path& canonical) const;

    /// Equal when both machines have the same path of the root folder.
    bool operator==(const MachineFiles& other) const { return root == other.root; }

private:
    /// Empty for the machine that the program runs on.
    std::filesystem::path root;
    /// The root folder, held open.
    std::shared_ptr<const FileDescriptor> top;
};

} // namespace tidemark
