#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/Change.h"

namespace tidemark {

/// What was before and after each change; nothing of a change whose values can't be shown.
std::vector<InspectionChange> changeList(const std::vector<Change>& changes);

} // namespace tidemark
