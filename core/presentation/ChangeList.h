#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/Change.h"

namespace tidemark {

/// The values before and after each change. Changes whose values can't be shown are left out.
std::vector<InspectionChange> changeList(const std::vector<Change>& changes);

} // namespace tidemark
