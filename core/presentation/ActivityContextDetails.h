#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/SystemActivity.h"

namespace tidemark {

/// What a live observation recorded besides its title, as rows and sentences.
InspectionSection activityContextDetails(const SystemActivity& activity, const Calendar& calendar);

} // namespace tidemark
