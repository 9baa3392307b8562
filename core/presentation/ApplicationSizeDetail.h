#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

namespace tidemark {

/// What is known of the size of the application that an event is about: when the event was made,
/// and in the newest snapshot, which may be null. Empty where no application was ever measured.
InspectionSection applicationSizeDetail(const Event& event, const Application& application,
                                        const Snapshot* latest, const Calendar& calendar);
/// Of an application that is gone.
InspectionSection removedApplicationSizeDetail(const Event& event, const Calendar& calendar);

} // namespace tidemark
