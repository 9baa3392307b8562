#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"
#include "core/base/Shared.h"
#include "core/records/Application.h"
#include "core/records/FolderSize.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// A folder or application whose size is measured, as it was at one moment. When a field after
/// `name` changes, an earlier measurement is out of date.
struct StorageMeasurementItem {
    static constexpr bool recurs = true;

    /// Canonical absolute path.
    std::string path;
    std::string name;
    /// Bundle identifier of an application; "directory:" and the path for a folder.
    std::string identifier;
    /// Application version and build; empty for a folder.
    std::string version;
    std::string build;
    std::optional<Date> modified;

    static StorageMeasurementItem application(const Application& application);
    /// The item of the folder at the canonical path `path`.
    static StorageMeasurementItem directory(const std::filesystem::path& path,
                                            std::optional<Date> modified);

    bool operator==(const StorageMeasurementItem&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"path", &StorageMeasurementItem::path, Private},
            Field{"name", &StorageMeasurementItem::name, Shown},
            Field{"identifier", &StorageMeasurementItem::identifier, Shown},
            Field{"version", &StorageMeasurementItem::version, Shown},
            Field{"build", &StorageMeasurementItem::build, Shown},
            Field{"modified", &StorageMeasurementItem::modified},
        };
    }
};

/// What is known of the size of one item. `breakdown`, `breakdownComplete`, `allocatedBytes`,
/// `bytes`, `measuredAt` and `measuredItem` come from the last successful attempt and are kept when
/// later attempts fail.
struct StorageMeasurementRecord {
    static constexpr bool recurs = true;
    /// How many parts `breakdown` keeps.
    static constexpr std::size_t partLimit = 256;

    /// The item in its last observed state.
    Shared<StorageMeasurementItem> item;
    /// Bytes of the largest parts, by name; at most `partLimit`.
    OptionalShared<SizeByName> breakdown;
    /// True when `breakdown` has all parts.
    std::optional<bool> breakdownComplete;
    std::optional<std::int64_t> allocatedBytes;
    /// Seconds of the last attempt.
    std::optional<double> lastAttemptDuration;
    /// Entries walked in the last attempt.
    std::optional<std::int64_t> visitedEntries;
    /// Logical size.
    std::optional<std::int64_t> bytes;
    std::optional<Date> measuredAt;
    /// `item` as it was when the measurement of `bytes` began.
    OptionalShared<StorageMeasurementItem> measuredItem;
    /// When the last attempt was made, whether it succeeded or not.
    std::optional<Date> attemptedAt;
    /// Number of consecutive failed attempts, counted up to 3.
    std::int64_t attempts = 0;
    /// Why the last attempt failed; absent after a success.
    std::optional<std::string> issue;

    /// True when the size belongs to the present state of the item and the last attempt succeeded.
    /// Path and name are not compared.
    bool matchesObservedMetadata() const;
    /// The size in the form that is compared; absent while none is known. An incomplete breakdown
    /// is left out, so that a missing part is not reported as removed.
    std::optional<FolderSize> folderSize() const;

    bool operator==(const StorageMeasurementRecord&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"item", &StorageMeasurementRecord::item},
            Field{"breakdown", &StorageMeasurementRecord::breakdown, Shown},
            Field{"breakdownComplete", &StorageMeasurementRecord::breakdownComplete},
            Field{"allocatedBytes", &StorageMeasurementRecord::allocatedBytes},
            Field{"lastAttemptDuration", &StorageMeasurementRecord::lastAttemptDuration},
            Field{"visitedEntries", &StorageMeasurementRecord::visitedEntries},
            Field{"bytes", &StorageMeasurementRecord::bytes},
            Field{"measuredAt", &StorageMeasurementRecord::measuredAt},
            Field{"measuredItem", &StorageMeasurementRecord::measuredItem},
            Field{"attemptedAt", &StorageMeasurementRecord::attemptedAt},
            Field{"attempts", &StorageMeasurementRecord::attempts},
            Field{"issue", &StorageMeasurementRecord::issue, Shown},
        };
    }
};

/// The records of all items of one measurement.
struct StorageMeasurementReport {
    std::vector<Shared<StorageMeasurementRecord>> records;
    Date observedAt;

    /// Number of records with a size, however old it is.
    std::int64_t measuredCount() const;
    /// Number of records for which `matchesObservedMetadata` is true.
    std::int64_t matchingCount() const;
    /// The sum of all known sizes.
    std::int64_t knownBytes() const;

    bool operator==(const StorageMeasurementReport&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"records", &StorageMeasurementReport::records},
            Field{"observedAt", &StorageMeasurementReport::observedAt},
        };
    }
};

} // namespace tidemark
