#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// Where the files of one edition of the program lie.
namespace AppDataLocation {

/// The identifier of a program that runs without a bundle.
inline constexpr std::string_view unbundled = "local.tidemark.mac";

/// Below the user's folder for the data of applications.
std::filesystem::path directoryName(std::string_view identifier);

} // namespace AppDataLocation

struct DataFiles {
    std::filesystem::path directory;
    /// Where an earlier release kept the journal, for those editions that take it over.
    std::optional<std::filesystem::path> legacyJournal;

    std::filesystem::path journal() const { return directory / "journal.json"; }
    std::filesystem::path upgradeBackup() const { return directory / "Backups/pre-v2"; }
    std::filesystem::path memoryHistory() const { return directory / "memory-history.json"; }
    std::filesystem::path systemActivity() const { return directory / "system-activity.json"; }
    std::filesystem::path storageMeasurements() const {
        return directory / "storage-measurements.json";
    }

    /// `applicationSupport` is the user's folder for the data of applications.
    static DataFiles of(std::string_view identifier,
                        const std::filesystem::path& applicationSupport, bool sandboxed = false);
};

} // namespace tidemark
