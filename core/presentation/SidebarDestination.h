#pragma once

#include "core/base/Uuid.h"
#include "core/records/EventCategory.h"

#include <set>
#include <variant>

namespace tidemark {

/// The selection in the sidebar, as far as it decides which events are shown.
namespace sidebarDestination {

struct Category {
    EventCategory category;
    bool operator==(const Category&) const = default;
};
struct Categories {
    std::set<EventCategory> categories;
    bool operator==(const Categories&) const = default;
};
/// A named snapshot.
struct OfBaseline {
    Uuid id;
    bool operator==(const OfBaseline&) const = default;
};
/// The differences of two kept captures, by the ids of their snapshots.
struct OfComparison {
    Uuid from;
    Uuid to;
    bool operator==(const OfComparison&) const = default;
};
struct Timeline {
    bool operator==(const Timeline&) const = default;
};

} // namespace sidebarDestination

using SidebarDestination =
    std::variant<sidebarDestination::Category, sidebarDestination::Categories,
                 sidebarDestination::OfBaseline, sidebarDestination::OfComparison,
                 sidebarDestination::Timeline>;

} // namespace tidemark
