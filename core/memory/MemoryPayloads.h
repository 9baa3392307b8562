#pragma once

#include "core/base/FolderGuard.h"

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace tidemark {

/// The folder of the files with the contents of clips. Because files that are not wanted are
/// deleted, reading and deleting follow no links, even if the folder itself was replaced by one.
/// All members but `path` and `contains` throw `FileError`; those that change anything also throw
/// what the guard throws.
class MemoryPayloads {
public:
    /// `guard` is the guard of the parent folder.
    explicit MemoryPayloads(std::filesystem::path folder, FolderGuard guard = {})
        : folder(std::move(folder)), guard(std::move(guard)) {}

    const std::filesystem::path& path() const { return folder; }
    /// The bytes of a file.
    std::string read(const std::string& name) const;

    /// Creates the folder unless it exists, and sets its mode to 0700. Must be called before the
    /// functions below.
    void prepare() const;
    /// True when a file of this name is there.
    bool contains(const std::string& name) const;
    /// Replaces a file; it has mode 0600 from the first byte on.
    void write(const std::string& name, std::string_view bytes) const;
    /// Deletes every file whose name is not in `wanted`. Leaves folders: the program creates none
    /// there.
    void keepOnly(const std::set<std::string>& wanted) const;

private:
    std::filesystem::path folder;
    FolderGuard guard;
};

} // namespace tidemark
