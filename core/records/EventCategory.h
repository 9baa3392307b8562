#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// The subject of an event. The raw value is also the title that is shown.
enum class EventCategory {
    applications,
    background,
    storage,
    system,
    networking,
    files,
    downloads,
    clipboard,
};

template <>
inline constexpr auto json::rawValues<EventCategory> =
    std::to_array<json::RawValue<EventCategory>>({
        {EventCategory::applications, "Applications"},
        {EventCategory::background, "Background items"},
        {EventCategory::storage, "Storage"},
        {EventCategory::system, "Mac Activity"},
        {EventCategory::networking, "Networking"},
        {EventCategory::files, "Recent Files"},
        {EventCategory::downloads, "Downloads"},
        {EventCategory::clipboard, "Clipboard"},
    });

/// False for the last three categories: they belong to the memory history.
constexpr bool appearsInTimeline(EventCategory category) {
    return category < EventCategory::files;
}

/// Whether an event asks for attention.
enum class Importance { prominent, routine };

template <>
inline constexpr auto json::rawValues<Importance> = std::to_array<json::RawValue<Importance>>({
    {Importance::prominent, "prominent"},
    {Importance::routine, "routine"},
});

} // namespace tidemark
