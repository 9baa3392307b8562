#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// What a size belongs to.
enum class StorageSubjectKind { freeSpace, folder, childFolder };

template <>
inline constexpr auto json::rawValues<StorageSubjectKind> =
    std::to_array<json::RawValue<StorageSubjectKind>>({
        {StorageSubjectKind::freeSpace, "freeSpace"},
        {StorageSubjectKind::folder, "folder"},
        {StorageSubjectKind::childFolder, "childFolder"},
    });

/// The sizes of one subject on one volume, a point for each day that has a complete measurement.
/// Point number i is `bytes[i]`, measured at `measuredAt[i]`. Days without a measurement have no
/// point.
struct StorageSeries {
    StorageSubjectKind kind = StorageSubjectKind::freeSpace;
    /// Absolute path; empty for free space.
    std::string path;
    std::string name;
    /// Identity of the volume that the capture observed, that of the home directory. Always present
    /// for free space.
    std::optional<std::string> volumeID;
    /// Its last known name.
    std::optional<std::string> volumeName;
    /// True for a size that was added up from measurements of child folders at various times. Such
    /// a size can't be compared with one that was measured at once.
    std::optional<bool> rollingMeasurement;
    /// In ascending order, in whole seconds, each on a day of its own in the time zone in which it
    /// was recorded.
    std::vector<Date> measuredAt;
    std::vector<std::int64_t> bytes;

    bool operator==(const StorageSeries&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"kind", &StorageSeries::kind},
            Field{"path", &StorageSeries::path, Private},
            Field{"name", &StorageSeries::name, Shown},
            Field{"volumeID", &StorageSeries::volumeID, Internal},
            Field{"volumeName", &StorageSeries::volumeName, Masked},
            Field{"rollingMeasurement", &StorageSeries::rollingMeasurement},
            Field{"measuredAt", &StorageSeries::measuredAt},
            Field{"bytes", &StorageSeries::bytes},
        };
    }
};

} // namespace tidemark
