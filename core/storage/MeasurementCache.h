#pragma once

#include "core/base/FolderGuard.h"
#include "core/records/StorageMeasurement.h"

#include <filesystem>
#include <map>
#include <optional>

namespace tidemark {

/// Measurement records by the path of their item. Shared, so that passing them on does not copy
/// them.
using MeasurementRecords = std::map<std::string, Shared<StorageMeasurementRecord>>;

/// The measurement records of all captures and their file, one JSON object from path to record.
/// Measuring a folder is expensive, so sizes are kept across captures and restarts; as the file is
/// replaced whole, records are collected for a second before it is written. Without a file, records
/// are kept in memory only.
class MeasurementCache {
public:
    /// The most records to keep; those with the oldest attempts are dropped.
    static constexpr std::size_t limit = 10'000;

    /// Without a file if `path` is empty. `guard` is the guard of its folder.
    explicit MeasurementCache(std::filesystem::path path, FolderGuard guard = {})
        : path(std::move(path)), guard(std::move(guard)) {}

    /// Reads the file, unless an earlier call has; if it does not exist the cache is empty. Throws
    /// `FileError` when it can't be read or decoded; then the cache stays empty, and the next call
    /// tries again. Until a call has succeeded, `store` must not be called, because `save` would
    /// replace the file.
    void load();
    /// The record of the item at `itemPath`; null when there is none.
    const Shared<StorageMeasurementRecord>* find(const std::string& itemPath) const;
    /// Keeps the record in memory. `now` is in seconds on the monotonic clock.
    void store(const Shared<StorageMeasurementRecord>& record, double now);
    /// Whether a record has waited a second for `save`. Saving after each of many small items would
    /// take far longer than measuring them.
    bool isSaveDue(double now) const { return unsavedSince && now - *unsavedSince >= saveInterval; }
    /// Replaces the file if a record was stored since the last call. Throws an `Error` when that
    /// fails; the next call tries again.
    void save();

private:
    static constexpr double saveInterval = 1;

    void trim();

    std::filesystem::path path;
    FolderGuard guard;
    MeasurementRecords records;
    bool loaded = false;
    /// When the oldest record that is not in the file was stored, on the monotonic clock.
    std::optional<double> unsavedSince;
};

} // namespace tidemark
