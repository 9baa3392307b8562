#pragma once

#include "core/records/Event.h"

#include <optional>
#include <span>
#include <string_view>

namespace tidemark {

/// A place in the sidebar, in the order shown. The raw value is its name in commands.
enum class WorkspaceDestination {
    timeline,
    files,
    downloads,
    clipboard,
    applications,
    storage,
    folderSizes,
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
        {WorkspaceDestination::background, "background"},
        {WorkspaceDestination::macActivity, "macActivity"},
        {WorkspaceDestination::devices, "devices"},
        {WorkspaceDestination::network, "network"},
        {WorkspaceDestination::snapshots, "snapshots"},
    });

/// The fixed properties of a place.
struct DestinationFacts {
    std::string_view label;
    /// Name of the symbol image.
    std::string_view symbol;
    std::optional<EventCategory> category;
    /// True when it can be used as a filter of the timeline, alone or together with others.
    bool isSystemFilter = false;
};
const DestinationFacts& facts(WorkspaceDestination destination);

/// True when an event belongs to the place.
bool includes(WorkspaceDestination destination, const Event& event);

/// The place where an event is opened from elsewhere, such as from a search.
WorkspaceDestination homeOf(const Event& event);

/// The places of the sidebar under one title.
struct DestinationGroup {
    std::string_view title;
    std::span<const WorkspaceDestination> destinations;
};
std::span<const DestinationGroup> destinationGroups();

} // namespace tidemark
