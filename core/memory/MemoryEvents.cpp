#include "core/memory/MemoryEvents.h"

namespace tidemark::MemoryEvents {

namespace {

struct Appearance {
    EventCategory category;
    std::string_view symbol;
};

/// Indexed by kind.
constexpr auto appearances = std::to_array<Appearance>({
    {EventCategory::files, "doc"},
    {EventCategory::files, "pencil"},
    {EventCategory::files, "doc.badge.plus"},
    {EventCategory::downloads, "arrow.down.to.line"},
    {EventCategory::applications, "play"},
    {EventCategory::applications, "stop"},
    {EventCategory::applications, "clock"},
    {EventCategory::clipboard, "clipboard"},
});
static_assert(appearances.size() == json::rawValues<MemoryRecord::Kind>.size());

} // namespace

Event event(const Shared<MemoryRecord>& record) {
    const Appearance& appearance = appearances[static_cast<std::size_t>(record->kind)];
    Event event;
    event.id = "memory-" + record->id;
    event.timestamp = record->timestamp;
    event.intervalStart = record->timestamp;
    event.title = record->title;
    event.subtitle = record->subtitle();
    event.category = appearance.category;
    event.importance = Importance::routine;
    event.path = record->path;
    event.appID = record->appID;
    event.symbol = appearance.symbol;
    event.memory = record;
    return event;
}

std::vector<Event> events(const MemoryArchive& archive) {
    std::vector<Event> events;
    events.reserve(archive.records.size());
    for (const auto& record : archive.records)
        events.push_back(event(record));
    return events;
}

} // namespace tidemark::MemoryEvents
