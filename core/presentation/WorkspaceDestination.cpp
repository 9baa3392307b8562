#include "core/presentation/WorkspaceDestination.h"

#include <array>

namespace tidemark {

namespace {

using enum WorkspaceDestination;

/// Indexed by destination.
constexpr auto allFacts = std::to_array<DestinationFacts>({
    {"Timeline", "clock", {}, false},
    {"Recent Files", "doc.on.doc", EventCategory::files, false},
    {"Downloads", "arrow.down.to.line", EventCategory::downloads, false},
    {"Clipboard", "clipboard", EventCategory::clipboard, false},
    {"Applications", "square.stack.3d.up", EventCategory::applications, true},
    {"Storage", "internaldrive", EventCategory::storage, true},
    {"Folder Sizes", "folder", EventCategory::storage, false},
    {"Storage Over Time", "chart.line", EventCategory::storage, false},
    {"Background", "gearshape.2", EventCategory::background, true},
    {"Mac Activity", "moon.zzz", EventCategory::system, true},
    {"Devices", "externaldrive", {}, true},
    {"Networking", "network", EventCategory::networking, true},
    {"Snapshots", "flag", {}, false},
});
static_assert(allFacts.size() == json::rawValues<WorkspaceDestination>.size());

constexpr std::array machinePlaces{timeline, applications, storage,     background,     macActivity,
                                   devices,  network,      folderSizes, storageOverTime};
constexpr std::array activityPlaces{files, downloads, clipboard};
constexpr auto groups = std::to_array<DestinationGroup>({
    {"Your Mac", machinePlaces},
    {"Activity", activityPlaces},
});

/// Where memory records are shown, indexed by kind.
constexpr std::array memoryHomes{files,        files,        files,        downloads,
                                 applications, applications, applications, clipboard};
static_assert(memoryHomes.size() == json::rawValues<MemoryRecord::Kind>.size());

bool isDeviceActivity(const Event& event) {
    using enum SystemActivity::Kind;
    if (!event.systemActivity)
        return false;
    const auto kind = event.systemActivity->kind;
    return kind == volumeChanged || kind == displayChanged || kind == bluetoothChanged;
}

bool appearsAmongChanges(const Event& event) {
    using enum MemoryRecord::Kind;
    return !event.memory || event.memory->kind == appLaunched || event.memory->kind == appClosed;
}

} // namespace

const DestinationFacts& facts(WorkspaceDestination destination) {
    return allFacts[static_cast<std::size_t>(destination)];
}

bool includes(WorkspaceDestination destination, const Event& event) {
    switch (destination) {
    case macActivity:
        return event.category == EventCategory::system && !isDeviceActivity(event);
    case devices:
        return isDeviceActivity(event);
    case timeline:
        return appearsAmongChanges(event);
    case snapshots:
        return true;
    default:
        return facts(destination).category == event.category;
    }
}

WorkspaceDestination homeOf(const Event& event) {
    if (event.memory)
        return memoryHomes[static_cast<std::size_t>(event.memory->kind)];
    if (!event.systemActivity)
        return timeline;
    if (isDeviceActivity(event))
        return devices;
    return event.category == EventCategory::networking ? network : macActivity;
}

std::span<const DestinationGroup> destinationGroups() {
    return groups;
}

} // namespace tidemark
