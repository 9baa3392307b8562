#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/Event.h"
#include "core/records/Snapshot.h"

namespace tidemark::ChangeInspection {

/// Describes the subject of a comparison event, taken from its first change, and then lists all its
/// changes. `latest` may be null. Empty for an event without changes.
std::vector<InspectionSection> sections(const Event& event, const Snapshot* latest,
                                        const Calendar& calendar);

} // namespace tidemark::ChangeInspection
