#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/FolderSize.h"

namespace tidemark {

/// The parts of a folder whose sizes changed, as far as both measurements recorded its parts.
std::vector<InspectionSection>
storageChangeDetail(const FolderSize& before, const FolderSize& after, const Calendar& calendar);

} // namespace tidemark
