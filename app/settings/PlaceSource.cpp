#include "app/settings/PlaceSource.h"

#include "app/preferences/PreferenceKeys.h"

namespace tidemark {

namespace {

/// The setting that has the same source as the place; empty for a place with several sources.
std::string_view settingOf(WorkspaceDestination place) {
    switch (place) {
    case WorkspaceDestination::files:
    case WorkspaceDestination::downloads:
        return preference::memoryFiles.name;
    case WorkspaceDestination::clipboard:
        return preference::memoryClipboard.name;
    case WorkspaceDestination::devices:
        return preference::environmentHistoryEnabled.name;
    case WorkspaceDestination::network:
        return preference::networkHistoryEnabled.name;
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
