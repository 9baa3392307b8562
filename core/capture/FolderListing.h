#pragma once

#include "core/base/CanonicalPath.h"
#include "core/base/Date.h"
#include "core/base/FileDescriptor.h"
#include "core/base/MachineFiles.h"
#include "core/capture/ReadingBudget.h"
#include "core/storage/FolderReader.h"
#include "core/system/StorageFileMetadata.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>

namespace tidemark {

/// One entry of an open folder. Links are not followed, and only regular files and folders are
/// opened.
struct FolderEntry {
    enum class Kind {
        regular,
        folder,
        link,
        /// A FIFO, a socket, a device.
        other,
        missing,
        /// Its status can't be read.
        unknown,
    };

    /// Descriptor of the folder, which must stay open as long as the entry is used.
    int folder = AT_FDCWD;
    std::filesystem::path path;
    Kind kind = Kind::unknown;
    /// Bytes of a regular file.
    std::int64_t size = 0;
    std::optional<Date> modified;
    /// Set for a regular file with several names.
    std::optional<FileVersion> sharedVersion;
    /// Whether anybody may execute it.
    bool isExecutable = false;

    /// The entry `name` in the folder open as `descriptor`, whose path is `folderPath`.
    static FolderEntry describe(int descriptor, const std::filesystem::path& folderPath,
                                const std::string& name);

    std::string name() const { return path.filename().native(); }
    /// The path as records store it.
    std::string pathText() const;
    /// What follows the last dot of the name, without the dot; empty for ".name".
    std::string extension() const;

    /// Invalid when this is not a folder or can't be opened.
    FileDescriptor openFolder() const;
    /// The text of a link; empty if the entry is not a link.
    std::string linkText() const;
    /// All bytes of a regular file. Throws `FileError`, also when it has more than `limit` bytes.
    std::string read(std::size_t limit) const;
    /// The first `count` bytes of a regular file, or all where it has fewer. Throws `FileError`.
    std::string readStart(std::size_t count) const;

private:
    FileDescriptor openFile() const;
};

/// The names in one folder, in byte order. The folder stays open for reading its entries.
class FolderListing {
public:
    enum class Hidden { skipped, listed };
    enum class Failure {
        /// The path does not exist.
        missing,
        /// The path exists or may exist, but listing it failed, for example because the budget was
        /// spent.
        unreadable,
    };

    static std::expected<FolderListing, Failure> open(const std::filesystem::path& path,
                                                      Hidden hidden, const ReadingBudget& budget) {
        return open(MachineFiles(), path, hidden, budget);
    }
    /// The same for a folder of `machine`. `path` is canonical; it and the paths of the entries are
    /// paths on that machine.
    static std::expected<FolderListing, Failure> open(const MachineFiles& machine,
                                                      const std::filesystem::path& path,
                                                      Hidden hidden, const ReadingBudget& budget);
    static std::expected<FolderListing, Failure> open(const FolderEntry& folder, Hidden hidden,
                                                      const ReadingBudget& budget);

    const std::vector<std::string>& names() const { return all; }
    FolderEntry entry(const std::string& name) const;

private:
    explicit FolderListing(std::filesystem::path path) : location(std::move(path)) {}
    std::expected<void, Failure> fill(std::expected<FolderReader, int> opened, Hidden hidden,
                                      const ReadingBudget& budget);

    std::filesystem::path location;
    FolderReader folder;
    std::vector<std::string> all;
};

} // namespace tidemark
