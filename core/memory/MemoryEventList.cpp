#include "core/memory/MemoryEventList.h"

#include "core/memory/MemoryEvents.h"

namespace tidemark {

MemoryEventList::Change MemoryEventList::update(const std::vector<Shared<MemoryRecord>>& records) {
    ++updates;
    Change change;
    for (const auto& record : records) {
        const auto known = entries.find(record.object().get());
        if (known != entries.end()) {
            known->second.update = updates;
            continue;
        }
        change.added.emplace_back(MemoryEvents::event(record));
        entries.emplace(record.object().get(), Entry{change.added.back(), updates});
    }
    if (entries.size() == records.size())
        return change;
    std::erase_if(entries, [&](const auto& entry) {
        const bool isGone = entry.second.update != updates;
        if (isGone)
            change.removed.push_back(entry.second.event);
        return isGone;
    });
    return change;
}

std::vector<Shared<Event>> MemoryEventList::events() const {
    std::vector<Shared<Event>> all;
    all.reserve(entries.size());
    for (const auto& [record, entry] : entries)
        all.push_back(entry.event);
    return all;
}

} // namespace tidemark
