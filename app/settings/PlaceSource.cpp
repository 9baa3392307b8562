#include "app/settings/PlaceSource.h"

#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

namespace {

/// The setting that has the same source as the place; empty for a place with several sources.
std::string_view settingOf(WorkspaceDestination place) {
    switch (place) {
    case WorkspaceDestination::files:
    case WorkspaceDestination::downloads:
        return preferenceKeys::memoryFiles.name;
    case WorkspaceDestination::clipboard:
        return preferenceKeys::memoryClipboard.name;
    case WorkspaceDestination::devices:
        return preferenceKeys::environmentHistoryEnabled.name;
    case WorkspaceDestination::network:
        return preferenceKeys::networkHistoryEnabled.name;
    default:
        return {};
    }
}

} // namespace

std::optional<std::string> absentSourceOf(WorkspaceDestination place,
                                          const SettingSources& sources) {
    return sources.absence(settingOf(place));
}

} // namespace tidemark
