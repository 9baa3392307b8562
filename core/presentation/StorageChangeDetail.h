#pragma once

#include "core/presentation/Inspection.h"
#include "core/records/FolderSize.h"

namespace tidemark {

/// Where the size of a folder changed, as far as both measurements know their parts.
std::vector<InspectionSection>
storageChangeDetail(const FolderSize& before, const FolderSize& after, const Calendar& calendar);

} // namespace tidemark
