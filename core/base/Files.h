#pragma once

#include "core/base/FileDescriptor.h"
#include "core/base/FileError.h"
#include "core/base/FolderGuard.h"

#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

/// Whole files on disk: read, and replaced so that a crash leaves the old or the new one.
namespace tidemark {

/// The bytes of a regular file of at most `limit` bytes. Never waits on a FIFO or a device.
/// Throws `FileError`.
std::string readFile(const std::filesystem::path& path,
                     std::size_t limit = std::numeric_limits<std::size_t>::max());
/// The same of a file that is open for reading, with `O_NONBLOCK`; `path` is for the sentence.
std::string readFile(const FileDescriptor& file, const std::filesystem::path& path,
                     std::size_t limit = std::numeric_limits<std::size_t>::max());

/// True when something stands at `path`, false when nothing does. Anything that keeps this from
/// being known (a folder that can't be searched) throws `FileError`: not knowing is not absence.
bool fileExists(const std::filesystem::path& path);

/// Creates a folder and its missing parents, each with mode 0700. Existing ones stay as they are.
void createPrivateFolders(const std::filesystem::path& folder);

/// The file to replace so that `path` gets new content: what a symbolic link there leads to, else
/// `path` itself. Throws `FileError` for a link that leads nowhere, and for anything but a regular
/// file: a replacement would take the place of a folder, a device or a pipe.
std::filesystem::path replaceablePath(const std::filesystem::path& path);

/// Makes the entries of a folder (a rename, a new file) survive a power loss.
void flushFolder(const std::filesystem::path& folder);

/// Replaces a file whole: the bytes go to a temporary file of mode 0600 in the same folder, and
/// `commit` flushes it, renames it over `path` and flushes the folder. Without `commit` nothing
/// changes. A process killed in between leaves a temporary file that the next replacement of the
/// same file removes. A link at `path` is replaced, too; see `replaceablePath`.
class FileReplacement {
public:
    /// The folder must exist. Throws `FileError`, as do the other members, and what `guard`
    /// throws, which is asked now and again before the rename.
    explicit FileReplacement(std::filesystem::path path, FolderGuard guard = {});
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    void write(std::string_view bytes);
    void commit();

    /// Removes the temporary files of replacements of `path` whose process is gone.
    static void removeLeftovers(const std::filesystem::path& path);

private:
    void flush();
    [[noreturn]] void fail() const;

    std::filesystem::path target;
    FolderGuard permission;
    std::filesystem::path temporary;
    FileDescriptor file;
    std::string buffer;
};

/// Replaces a file by these bytes, as `FileReplacement` does.
void replaceFile(const std::filesystem::path& path, std::string_view bytes,
                 const FolderGuard& guard = {});

} // namespace tidemark
