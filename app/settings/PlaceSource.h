#pragma once

#include "app/preferences/SettingSource.h"
#include "core/presentation/WorkspaceDestination.h"

namespace tidemark {

/// Why nothing can come to a place on this system, as a sentence; absent where something can.
std::optional<std::string> absentSourceOf(WorkspaceDestination place,
                                          const SettingSources& sources);

} // namespace tidemark
