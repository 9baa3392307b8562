#pragma once

#include "core/base/FolderGuard.h"
#include "core/records/StorageMeasurement.h"

#include <filesystem>
#include <map>

namespace tidemark {

/// Measurement records by the path of their item. Shared, so that passing them on copies nothing.
using MeasurementRecords = std::map<std::string, Shared<StorageMeasurementRecord>>;

/// The measurement records of all captures and the file that holds them: one JSON object from
/// path to record. Without a file they last as long as the process.
class MeasurementCache {
public:
    /// Most records that are kept; those attempted longest ago go first.
    static constexpr std::size_t limit = 10'000;

    /// An empty `file` keeps everything in memory. `guard` is that of the folder of the file.
    explicit MeasurementCache(std::filesystem::path file, FolderGuard guard = {})
        : path(std::move(file)), permission(std::move(guard)) {}

    /// Reads the file, once; no file is an empty cache. Throws `FileError` when it can't be read or
    /// understood: nothing is known then, nothing is written, and the next call tries again.
    void load();
    /// The record of the item at `itemPath`, or null.
    const Shared<StorageMeasurementRecord>* find(const std::string& itemPath) const;
    /// Keeps the record in memory, then replaces the file. Throws an `Error` when that fails.
    void store(const Shared<StorageMeasurementRecord>& record);

private:
    void trim();
    void save() const;

    std::filesystem::path path;
    FolderGuard permission;
    MeasurementRecords records;
    bool loaded = false;
};

} // namespace tidemark
