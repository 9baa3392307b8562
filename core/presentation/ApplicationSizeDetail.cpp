#include "core/presentation/ApplicationSizeDetail.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/presentation/InspectionWords.h"

namespace tidemark {

namespace {

constexpr const char* unavailable = "Unavailable · no complete measurement was recorded";
constexpr const char* mismatch =
    "The event-time size measurement did not yet match this app version.";
constexpr const char* removed =
    "This is the bundle’s last recorded logical size, not confirmed disk space freed. The app may "
    "have been moved to Trash or another location.";

/// A size that was measured of the application as it was at the event.
bool isOfEvent(const OptionalShared<StorageMeasurementRecord>& record) {
    return record && record->bytes && record->matchesObservedMetadata();
}

const StorageMeasurementRecord* latestSize(const Application& application, const Snapshot* latest) {
    if (latest && latest->applicationStorage)
        for (const auto& record : latest->applicationStorage->records)
            if (record->item->path == application.path
                && record->item->identifier == application.bundleID)
                return &*record;
    return nullptr;
}

void addMeasured(InspectionSection& section, const StorageMeasurementRecord& record,
                 const Calendar& calendar) {
    section.rows.push_back({"Last measured bundle size",
                            record.bytes ? byteString(*record.bytes) : "Not measured yet"});
    if (!record.bytes)
        return;
    if (record.measuredAt)
        section.rows.push_back(
            {"Size measured", inspectionWords::moment(*record.measuredAt, calendar)});
    if (record.measuredItem && !record.measuredItem->version.empty())
        section.rows.push_back({"Size measured for version", record.measuredItem->version});
}

} // namespace

InspectionSection applicationSizeDetail(const Event& event, const Application& application,
                                        const Snapshot* latest, const Calendar& calendar) {
    InspectionSection section;
    const auto& then = event.applicationSizeAfter;
    const auto* now = latestSize(application, latest);
    if (!then && !now)
        return section;
    section.rows.push_back(
        {"Event-time bundle size", isOfEvent(then) ? byteString(*then->bytes) : unavailable});
    if (isOfEvent(event.applicationSizeBefore) && isOfEvent(then))
        section.rows.push_back(
            {"Recorded bundle-size change",
             signedBytes(saturatingDifference(*then->bytes, *event.applicationSizeBefore->bytes))});
    if (now)
        addMeasured(section, *now, calendar);
    if (then && then->bytes && !then->matchesObservedMetadata())
        section.sentences.emplace_back(mismatch);
    return section;
}

InspectionSection removedApplicationSizeDetail(const Event& event, const Calendar& calendar) {
    InspectionSection section;
    if (!event.removedApplicationSize)
        return section;
    addMeasured(section, *event.removedApplicationSize, calendar);
    section.sentences.emplace_back(removed);
    return section;
}

} // namespace tidemark
