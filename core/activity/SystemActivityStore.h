#pragma once

#include "core/base/FolderGuard.h"
#include "core/records/SystemActivity.h"

#include <filesystem>
#include <vector>

namespace tidemark {

/// The document of live activity: one JSON array of records, oldest first. Not for two threads at
/// once; the file has one writer.
class SystemActivityStore {
public:
    /// All kinds share these places; the oldest records make room.
    static constexpr std::size_t mostRecords = 2000;

    /// `guard` is that of the data folder.
    explicit SystemActivityStore(std::filesystem::path document, FolderGuard guard = {})
        : url(std::move(document)), permission(std::move(guard)) {}

    /// Reads the file: its last `mostRecords` records, none when there is no file. Throws
    /// `FileError`. Nothing on disk changes.
    static std::vector<SystemActivity> read(const std::filesystem::path& document);

    /// Takes over what the file holds. Throws as `read` does; what was known stays then.
    void load() { current = read(url); }
    /// As last read or written.
    const std::vector<SystemActivity>& records() const { return current; }

    /// Replaces the file, of mode 0600 in folders of mode 0700, by one that ends with `activity`.
    /// Throws `Error`: `records` is as before then, and the file too unless only its folder could
    /// not be flushed.
    void append(SystemActivity activity);

private:
    const std::filesystem::path url;
    const FolderGuard permission;
    std::vector<SystemActivity> current;
};

} // namespace tidemark
