#pragma once

#include <filesystem>
#include <optional>

namespace tidemark {

/// The paths of the files of this user's history.
struct DataFiles {
    /// The name of the program's folders: one in the user's folder for data, one in the user's
    /// folder for configuration files.
    static constexpr const char* folderName = "Tidemark";

    std::filesystem::path directory;
    /// The journal of an earlier release, which is migrated once.
    std::optional<std::filesystem::path> legacyJournal;

    std::filesystem::path journal() const { return directory / "journal.json"; }
    std::filesystem::path upgradeBackup() const { return directory / "Backups/pre-v2"; }
    std::filesystem::path memoryHistory() const { return directory / "memory-history.json"; }
    std::filesystem::path systemActivity() const { return directory / "system-activity.json"; }
    std::filesystem::path storageMeasurements() const {
        return directory / "storage-measurements.json";
    }
    /// The daily sizes.
    std::filesystem::path storageHistory() const { return directory / "storage-history.json"; }
    /// When the recorder began, paused and ended.
    std::filesystem::path recorderRuns() const { return directory / "recorder-runs.json"; }

    /// `applicationSupport` is the user's folder for application data.
    static DataFiles below(const std::filesystem::path& applicationSupport);
};

} // namespace tidemark
