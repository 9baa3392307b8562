#pragma once

#include "core/base/FolderGuard.h"
#include "core/base/Shared.h"
#include "core/records/SystemActivity.h"

#include <filesystem>
#include <vector>

namespace tidemark {

/// The document of live activity: one JSON array of records, oldest first. Not thread-safe; only
/// one process may write the file.
class SystemActivityStore {
public:
    /// The limit for the records of all kinds together; the oldest ones are dropped.
    static constexpr std::size_t mostRecords = 2000;

    /// `guard` is the guard of the data folder.
    explicit SystemActivityStore(std::filesystem::path url, FolderGuard guard = {})
        : url(std::move(url)), guard(std::move(guard)) {}

    /// Reads the last `mostRecords` records of the file; none when there is no file. Throws
    /// `FileError`. Changes nothing on disk.
    static std::vector<Shared<SystemActivity>> read(const std::filesystem::path& document);

    /// Replaces `records` by the content of the file. Throws as `read` does; `records` is unchanged
    /// then.
    void load() { current = read(url); }
    /// The records as last read or written. A copy shares the records.
    const std::vector<Shared<SystemActivity>>& records() const { return current; }

    /// Appends a record by replacing the file, with mode 0600 in folders of mode 0700. Throws
    /// `Error` and leaves `records` unchanged. The file is unchanged then, too, except when it was
    /// already replaced and only flushing its folder failed.
    void append(SystemActivity activity);

private:
    const std::filesystem::path url;
    const FolderGuard guard;
    std::vector<Shared<SystemActivity>> current;
};

} // namespace tidemark
