#pragma once

#include "core/base/FileDescriptor.h"
#include "core/base/FileError.h"
#include "core/base/FolderGuard.h"

#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

/// Reads files whole, and replaces them so that a crash leaves either the old or the new content.
namespace tidemark {

/// The bytes of a regular file of at most `limit` bytes. Never waits on a FIFO or a device.
/// Throws `FileError`.
std::string readFile(const std::filesystem::path& path,
                     std::size_t limit = std::numeric_limits<std::size_t>::max());
/// The same for a file that is already open for reading, with `O_NONBLOCK`; `path` is used in
/// errors only.
std::string readFile(const FileDescriptor& file, const std::filesystem::path& path,
                     std::size_t limit = std::numeric_limits<std::size_t>::max());

/// Whether there is an entry of any kind at `path`. Throws `FileError` when that can't be
/// determined, as in a folder without search permission.
bool fileExists(const std::filesystem::path& path);

/// Creates a folder and its missing parents, each with mode 0700. Existing ones stay as they are.
/// The folder that `guard` guards is never created: it existed when it was locked, so if it is
/// missing, someone removed it. Throws `FileError` and what `guard` throws.
void createPrivateFolders(const std::filesystem::path& folder, const FolderGuard& guard = {});

/// The file to replace so that `path` gets new content: the target of a symbolic link, else `path`
/// itself. Throws `FileError` for a link whose target does not exist, and for a folder, device or
/// pipe, which a replacement would destroy.
std::filesystem::path replaceablePath(const std::filesystem::path& path);

/// Makes the entries of a folder (a rename, a new file) survive a power loss.
void flushFolder(const std::filesystem::path& folder);

/// Replaces a file whole: the bytes go to a temporary file of mode 0600 in the same folder, and
/// `commit` flushes it, renames it over `path` and flushes the folder. Without `commit` nothing
/// changes. A process killed in between leaves a temporary file that the next replacement of the
/// same file removes. A symbolic link at `path` is itself replaced; call `replaceablePath` first to
/// replace its target.
class FileReplacement {
public:
    /// The folder must exist. This, `write` and `commit` throw `FileError`. The guard is checked
    /// here and in `commit` before the rename, and what it throws is passed on.
    explicit FileReplacement(std::filesystem::path path, const FolderGuard& guard = {});
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void write(std::string_view bytes);
    void commit();

    /// Removes the temporary files of processes that were killed while they replaced `path`.
    static void removeLeftovers(const std::filesystem::path& path);

private:
    void flush();
    [[noreturn]] void fail() const;

    std::filesystem::path target;
    FolderGuard guard;
    std::filesystem::path temporary;
    FileDescriptor file;
    std::string buffer;
};

/// Replaces a file by these bytes, as `FileReplacement` does.
void replaceFile(const std::filesystem::path& path, std::string_view bytes,
                 const FolderGuard& guard = {});

} // namespace tidemark
