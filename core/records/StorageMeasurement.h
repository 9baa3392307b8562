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

/// The identity of something whose size is measured.
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
    /// `path` is a canonical path of this machine, which becomes text here.
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

/// What is known of one item: a size is a dated fact about a particular state of it, and survives
/// later attempts that fail. `bytes`, `measuredAt` and `measuredItem` come from one success.
struct StorageMeasurementRecord {
    static constexpr bool recurs = true;
    /// How many parts `breakdown` keeps.
    static constexpr std::size_t partLimit = 256;

    /// The item as last observed.
    Shared<StorageMeasurementItem> item;
    /// Bytes of the largest parts by name, at most 256.
    OptionalShared<SizeByName> breakdown;
    /// True when `breakdown` holds all parts.
    std::optional<bool> breakdownComplete;
    std::optional<std::int64_t> allocatedBytes;
    /// Seconds of the last attempt.
    std::optional<double> lastAttemptDuration;
    /// Entries walked in the last attempt.
    std::optional<std::int64_t> visitedEntries;
    /// Logical size.
    std::optional<std::int64_t> bytes;
    std::optional<Date> measuredAt;
    /// `item` as it was when `bytes` was measured.
    OptionalShared<StorageMeasurementItem> measuredItem;
    /// The last attempt, good or bad.
    std::optional<Date> attemptedAt;
    /// Failed attempts in a row, 0 to 3.
    std::int64_t attempts = 0;
    /// Failure text of the last attempt; absent after a success.
    std::optional<std::string> issue;

    /// True when the size belongs to the item as it is now and the last attempt was good. Path and
    /// name take no part: what was only moved keeps its measurement.
    bool matchesObservedMetadata() const;
    /// The size in the comparable form; absent while nothing is known. A breakdown that lacks
    /// parts is left out, so that no part is taken for removed.
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

/// The records of one round of measuring.
struct StorageMeasurementReport {
    std::vector<Shared<StorageMeasurementRecord>> records;
    Date observedAt;

    /// Records with a size, of whatever date.
    std::int64_t measuredCount() const;
    /// Records whose size belongs to the item as it is now.
    std::int64_t matchingCount() const;
    /// The sum of the known sizes.
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
