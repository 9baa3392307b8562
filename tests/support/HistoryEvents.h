#pragma once

#include "core/records/Event.h"

#include <string>
#include <vector>

/// Short builders of events for tests. Times are seconds since 2001.
namespace tidemark::test {

inline Event event(const std::string& id, double time,
                   EventCategory category = EventCategory::applications) {
    Event made;
    made.id = id;
    made.title = id;
    made.timestamp = made.intervalStart = Date{time};
    made.category = category;
    return made;
}

/// The event of a memory record, with its category.
inline Event memoryEvent(const std::string& id, double time, MemoryRecord::Kind kind,
                         std::optional<std::string> path = {},
                         std::optional<std::string> text = {}) {
    using enum MemoryRecord::Kind;
    Event made = event(id, time);
    if (kind == clipboard)
        made.category = EventCategory::clipboard;
    else if (kind == downloaded)
        made.category = EventCategory::downloads;
    else if (kind < downloaded)
        made.category = EventCategory::files;
    MemoryRecord record;
    record.id = id;
    record.title = id;
    record.kind = kind;
    record.timestamp = made.timestamp;
    record.path = made.path = std::move(path);
    record.text = std::move(text);
    made.memory.emplace(std::move(record));
    return made;
}

inline Event activityEvent(const std::string& id, double time, SystemActivity::Kind kind,
                           EventCategory category = EventCategory::system) {
    Event made = event(id, time, category);
    SystemActivity activity;
    activity.kind = kind;
    made.systemActivity.emplace(std::move(activity));
    return made;
}

/// The ids of events, separated by blanks.
inline std::string ids(const std::vector<Shared<Event>>& events) {
    std::string text;
    for (const auto& each : events)
        text += (text.empty() ? "" : " ") + each->id;
    return text;
}

} // namespace tidemark::test
