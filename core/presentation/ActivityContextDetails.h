#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/SystemActivity.h"

namespace tidemark {

/// The details of a live activity record besides its title, as rows and sentences.
InspectionSection activityContextDetails(const SystemActivity& activity, const Calendar& calendar);

} // namespace tidemark
