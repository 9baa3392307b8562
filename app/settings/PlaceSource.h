#pragma once

#include "app/preferences/SettingSource.h"
#include "core/presentation/WorkspaceDestination.h"

namespace tidemark {

/// Why a place of the sidebar is always empty on this system, as a sentence; absent for a place
/// that can have events.
std::optional<std::string> absentSourceOf(WorkspaceDestination place,
                                          const SettingSources& sources);

} // namespace tidemark
