#pragma once

#include "app/preferences/SettingSource.h"
#include "core/presentation/WorkspaceDestination.h"

namespace tidemark {

/// Why a place of the sidebar gets no new events on this system, as a sentence; absent for a place
/// that can get some.
std::optional<std::string> absentSourceOf(WorkspaceDestination place,
                                          const SettingSources& sources);

} // namespace tidemark
