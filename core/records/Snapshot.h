#pragma once

#include "core/base/Shared.h"
#include "core/base/Uuid.h"
#include "core/records/Application.h"
#include "core/records/BackgroundItem.h"
#include "core/records/Coverage.h"
#include "core/records/FolderSize.h"
#include "core/records/FolderStorageReport.h"
#include "core/records/MetadataReport.h"
#include "core/records/OperatingSystemObservation.h"
#include "core/records/ScanTiming.h"
#include "core/records/StorageMeasurement.h"
#include "core/records/VolumeContext.h"

namespace tidemark {

/// Sorted by path.
using ApplicationList = Shared<std::vector<Shared<Application>>>;
/// Sorted by path.
using BackgroundItemList = Shared<std::vector<Shared<BackgroundItem>>>;
template <>
inline constexpr bool collectionRecurs<std::vector<Shared<Application>>> = true;
template <>
inline constexpr bool collectionRecurs<std::vector<Shared<BackgroundItem>>> = true;

/// One observation of the machine. Its larger parts are shared with other snapshots that have equal
/// ones, so that hundreds of snapshots stay small in memory.
struct Snapshot {
    Uuid id;
    Date timestamp;
    ApplicationList applications;
    BackgroundItemList backgroundItems;
    std::vector<Shared<FolderSize>> folders;
    std::optional<VolumeContext> volumeContext;
    /// Free space of the observed volume, in bytes.
    std::optional<std::int64_t> freeBytes;
    /// Identity of that volume; free space is only compared between snapshots of the same volume.
    std::optional<std::string> volumeID;
    Coverage coverage;
    std::optional<std::vector<FolderStorageReport>> folderStorage;
    std::optional<StorageMeasurementReport> applicationStorage;
    /// Seconds after which the next capture was due when this one was made.
    std::optional<double> expectedCaptureInterval;
    std::optional<OperatingSystemObservation> operatingSystem;
    /// Seconds that the capture took.
    std::optional<double> captureDuration;
    std::optional<std::vector<MetadataReport>> additionalReports;
    std::optional<std::vector<ScanTiming>> scanTimings;

    bool operator==(const Snapshot&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &Snapshot::id, Internal},
            Field{"timestamp", &Snapshot::timestamp},
            Field{"applications", &Snapshot::applications, Repeats},
            Field{"backgroundItems", &Snapshot::backgroundItems, Repeats},
            Field{"folders", &Snapshot::folders},
            Field{"volumeContext", &Snapshot::volumeContext},
            Field{"freeBytes", &Snapshot::freeBytes},
            Field{"volumeID", &Snapshot::volumeID, Internal},
            Field{"coverage", &Snapshot::coverage},
            Field{"folderStorage", &Snapshot::folderStorage},
            Field{"applicationStorage", &Snapshot::applicationStorage},
            Field{"expectedCaptureInterval", &Snapshot::expectedCaptureInterval},
            Field{"operatingSystem", &Snapshot::operatingSystem},
            Field{"captureDuration", &Snapshot::captureDuration},
            Field{"additionalReports", &Snapshot::additionalReports},
            Field{"scanTimings", &Snapshot::scanTimings},
        };
    }
};

// Compiled once, in Snapshot.cpp: the codec of every record inside it takes seconds to compile.
extern template const json::ValueReader& json::readerOf<Snapshot>();
extern template void json::encode(json::JsonWriter&, const Snapshot&);

/// A snapshot that the user named.
struct Baseline {
    /// Id of the baseline, not of its snapshot.
    Uuid id;
    std::string name;
    Shared<Snapshot> snapshot;

    /// A baseline with a new id.
    static Baseline named(std::string name, Shared<Snapshot> snapshot) {
        return {Uuid::random(), std::move(name), std::move(snapshot)};
    }

    bool operator==(const Baseline&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &Baseline::id, Internal},
            Field{"name", &Baseline::name, Private},
            Field{"snapshot", &Baseline::snapshot},
        };
    }
};

} // namespace tidemark
