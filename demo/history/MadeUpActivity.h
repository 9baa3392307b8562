#pragma once

#include "core/records/MemoryRecord.h"
#include "core/records/SystemActivity.h"

#include <vector>

namespace tidemark::demo {

/// What a machine reported while it ran in the days before `now`, oldest first.
std::vector<Shared<SystemActivity>> madeUpActivity(Date now, int days);

/// The files, applications and clips of the last weeks before `now`.
std::vector<MemoryRecord> madeUpMemory(Date now);

} // namespace tidemark::demo
