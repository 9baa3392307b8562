#pragma once

#include <array>
#include <string_view>

/// The documents that the program writes. `tidemark erase` removes them and no others, and
/// `tidemark doctor` reports on them. For both, a new document needs a row here.
namespace tidemark::ownDocuments {

struct OwnDocument {
    std::string_view name;
    /// What it holds, in words for the user.
    std::string_view content;
    /// The key of its version; empty for a document without one.
    std::string_view versionKey{};
};

/// The documents in the data folder.
inline constexpr auto ofData = std::to_array<OwnDocument>({
    {"journal.json", "the history and named snapshots", "schemaVersion"},
    {"system-activity.json", "live activity"},
    {"memory-history.json", "recent files, applications and clips", "version"},
    {"storage-measurements.json", "sizes of folders that are being measured"},
    {"storage-history.json", "sizes of folders over time", "schemaVersion"},
    {"recorder-runs.json", "when recording began and ended"},
});

/// The documents in the folder of settings.
inline constexpr auto ofSettings = std::to_array<OwnDocument>({
    {"settings.json", "settings"},
    {"settings.json.bak", "a copy of the settings"},
});

/// The start of the names of damaged settings that were set aside; the time follows.
inline constexpr std::string_view damagedSettings = "settings.json.damaged-";

} // namespace tidemark::ownDocuments
