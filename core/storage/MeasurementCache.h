#pragma once

#include "core/base/FolderGuard.h"
#include "core/records/StorageMeasurement.h"

#include <filesystem>
#include <map>
#include <optional>

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
    /// Keeps the record in memory. `now` is the time on the monotonic clock.
    void store(const Shared<StorageMeasurementRecord>& record, double now);
    /// Whether a record has waited a second for `save`: the file is written whole, which for many
    /// small items would take far longer than measuring them.
    bool isSaveDue(double now) const { return unsavedSince && now - *unsavedSince >= saveInterval; }
    /// Replaces the file when a record was stored since the last time. Throws an `Error` when that
    /// fails: it is tried again by the next call.
    void save();

private:
    static constexpr double saveInterval = 1;

    void trim();

    std::filesystem::path path;
    FolderGuard permission;
    MeasurementRecords records;
    bool loaded = false;
    /// When the first record was stored that is not in the file yet.
    std::optional<double> unsavedSince;
};

} // namespace tidemark
