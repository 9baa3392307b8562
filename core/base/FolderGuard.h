#pragma once

#include <filesystem>
#include <functional>
#include <utility>

namespace tidemark {

/// Checks that a data folder still belongs to this process. Every object that writes there gets a
/// guard and calls `require` before it creates, replaces or deletes anything: once the folder was
/// removed or replaced, whatever is at its path may belong to another process. Thread-safe.
class FolderGuard {
public:
    /// Permits everything. For files outside of a locked folder, such as one named on the command
    /// line.
    FolderGuard() = default;
    /// `isOwn` returns whether `folder` is still this process's own. Use `FolderLock::guard` to
    /// make one for a locked folder.
    explicit FolderGuard(std::function<bool()> isOwn, std::filesystem::path folder = {})
        : isOwn(std::move(isOwn)), folder(std::move(folder)) {}

    /// Throws an `Error` when the folder is no longer this process's own.
    void require() const;
    /// The guarded folder; empty for a guard without one.
    const std::filesystem::path& guarded() const { return folder; }

private:
    std::function<bool()> isOwn;
    std::filesystem::path folder;
};

} // namespace tidemark
