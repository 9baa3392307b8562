#pragma once

#include "core/base/FolderGuard.h"

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace tidemark {

/// The folder of the side files, which hold what clips are made of. Links are never followed, the
/// folder's own among them: what is not wanted is deleted here, and may not lie elsewhere. All
/// members throw `FileError`, and those that change anything what the guard throws.
class MemoryPayloads {
public:
    /// `guard` is that of the folder that `place` lies in.
    explicit MemoryPayloads(std::filesystem::path place, FolderGuard guard = {})
        : folder(std::move(place)), permission(std::move(guard)) {}

    const std::filesystem::path& path() const { return folder; }
    /// The bytes of a side file.
    std::string read(const std::string& name) const;

    /// Makes the folder, if need be, and gives it mode 0700. Before any of what follows.
    void prepare() const;
    /// True when a file of this name is there.
    bool contains(const std::string& name) const;
    /// Replaces a side file, with mode 0600 from its first byte on.
    void write(const std::string& name, std::string_view bytes) const;
    /// Deletes every file with another name than these. Folders stay, since none is ours.
    void keepOnly(const std::set<std::string>& wanted) const;

private:
    std::filesystem::path folder;
    FolderGuard permission;
};

} // namespace tidemark
