#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

namespace tidemark {

/// The sizes of an event's application at the time of the event and in the newest snapshot, which
/// may be null. Empty when the application was never measured.
InspectionSection applicationSizeDetail(const Event& event, const Application& application,
                                        const Snapshot* latest, const Calendar& calendar);
/// The last measured size of an application that was removed; empty when it was never measured.
InspectionSection removedApplicationSizeDetail(const Event& event, const Calendar& calendar);

} // namespace tidemark
