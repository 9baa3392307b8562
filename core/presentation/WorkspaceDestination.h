#pragma once

#include "core/records/Event.h"

#include <optional>
#include <span>
#include <string_view>

namespace tidemark {

/// An item of the sidebar. The raw value is its name in commands, which show it in the words of
/// this system and accept both.
enum class WorkspaceDestination {
    timeline,
    files,
    downloads,
    clipboard,
    applications,
    storage,
    folderSizes,
    storageOverTime,
    background,
    macActivity,
    devices,
    network,
    snapshots,
};

template <>
inline constexpr auto json::rawValues<WorkspaceDestination> =
    std::to_array<json::RawValue<WorkspaceDestination>>({
        {WorkspaceDestination::timeline, "timeline"},
        {WorkspaceDestination::files, "files"},
        {WorkspaceDestination::downloads, "downloads"},
        {WorkspaceDestination::clipboard, "clipboard"},
        {WorkspaceDestination::applications, "applications"},
        {WorkspaceDestination::storage, "storage"},
        {WorkspaceDestination::folderSizes, "folderSizes"},
        {WorkspaceDestination::storageOverTime, "storageOverTime"},
        {WorkspaceDestination::background, "background"},
        {WorkspaceDestination::macActivity, "macActivity"},
        {WorkspaceDestination::devices, "devices"},
        {WorkspaceDestination::network, "network"},
        {WorkspaceDestination::snapshots, "snapshots"},
    });

/// The fixed properties of a sidebar item.
struct DestinationFacts {
    std::string_view label;
    /// Name of the symbol image.
    std::string_view symbol;
    std::optional<EventCategory> category;
    /// True when it can be used as a filter of the timeline, alone or together with others.
    bool isSystemFilter = false;
};
const DestinationFacts& facts(WorkspaceDestination destination);

/// True when the list of the sidebar item contains the event.
bool includes(WorkspaceDestination destination, const Event& event);

/// The sidebar item that is selected to show an event, for example when it is opened from a search.
WorkspaceDestination homeOf(const Event& event);

/// The items of the sidebar under one title, in the order shown.
struct DestinationGroup {
    std::string_view title;
    std::span<const WorkspaceDestination> destinations;
};
std::span<const DestinationGroup> destinationGroups();

} // namespace tidemark
