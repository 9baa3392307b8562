#pragma once

#include "core/base/Shared.h"
#include "core/records/Change.h"
#include "core/records/EventCategory.h"
#include "core/records/InstallationRecord.h"
#include "core/records/MemoryRecord.h"
#include "core/records/ObservationGap.h"
#include "core/records/StorageMeasurement.h"
#include "core/records/SystemActivity.h"
#include "core/records/VolumeContext.h"

namespace tidemark {

/// One entry of the timeline. Its payload is what the event was made from: `changes` from the
/// comparison of two snapshots, `installationRecord`, `systemActivity`, `observationGap` or
/// `memory`; the others are empty. The interval of a comparison is the time in which the changes
/// happened.
struct Event {
    /// Derived from the source, so that rebuilding from the same data gives the same ids.
    std::string id;
    /// End of the interval, and what the timeline sorts by.
    Date timestamp;
    /// Start of the interval; equal to `timestamp` for an exact moment.
    Date intervalStart;
    std::string title;
    std::string subtitle;
    EventCategory category = EventCategory::applications;
    Importance importance = Importance::prominent;
    std::vector<Change> changes;
    /// File system path of the subject.
    std::optional<std::string> path;
    /// Bundle identifier or job label of the subject.
    std::optional<std::string> identifier;
    /// Bundle identifier of the application concerned.
    std::optional<std::string> appID;
    /// Name of the symbol image shown with the event.
    std::string symbol;
    OptionalShared<StorageMeasurementRecord> applicationSizeBefore;
    OptionalShared<StorageMeasurementRecord> applicationSizeAfter;
    OptionalShared<VolumeContext> volumeContext;
    /// Last known size of a removed application.
    OptionalShared<StorageMeasurementRecord> removedApplicationSize;
    OptionalShared<InstallationRecord> installationRecord;
    OptionalShared<SystemActivity> systemActivity;
    std::optional<ObservationGap> observationGap;
    OptionalShared<MemoryRecord> memory;

    bool operator==(const Event&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"id", &Event::id, Internal},
            Field{"timestamp", &Event::timestamp},
            Field{"intervalStart", &Event::intervalStart},
            Field{"title", &Event::title, Shown},
            Field{"subtitle", &Event::subtitle, Shown},
            Field{"category", &Event::category},
            Field{"importance", &Event::importance},
            Field{"changes", &Event::changes},
            Field{"path", &Event::path, Private},
            Field{"identifier", &Event::identifier, Shown},
            Field{"appID", &Event::appID, Shown},
            Field{"symbol", &Event::symbol, Internal},
            Field{"applicationSizeBefore", &Event::applicationSizeBefore},
            Field{"applicationSizeAfter", &Event::applicationSizeAfter},
            Field{"volumeContext", &Event::volumeContext},
            Field{"removedApplicationSize", &Event::removedApplicationSize},
            Field{"installationRecord", &Event::installationRecord},
            Field{"systemActivity", &Event::systemActivity},
            Field{"observationGap", &Event::observationGap},
            Field{"memory", &Event::memory},
        };
    }
};

// Compiled once, in Event.cpp: the codec of every record inside it takes seconds to compile.
extern template const json::ValueReader& json::readerOf<Event>();
extern template void json::encode(json::JsonWriter&, const Event&);

} // namespace tidemark
