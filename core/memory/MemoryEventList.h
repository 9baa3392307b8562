#pragma once

#include "core/memory/MemoryArchive.h"
#include "core/records/Event.h"

#include <unordered_map>
#include <vector>

namespace tidemark {

/// The events of the memory history, kept up to date from archive to archive. Archives share
/// unchanged records, so an additional record makes only one new event, without comparing any
/// others.
class MemoryEventList {
public:
    /// The events that an update added and removed.
    struct Change {
        std::vector<Shared<Event>> removed;
        std::vector<Shared<Event>> added;

        bool isEmpty() const { return removed.empty() && added.empty(); }
    };

    /// Takes the records of the next archive and returns the difference.
    Change update(const std::vector<Shared<MemoryRecord>>& records);
    /// All events, in no particular order.
    std::vector<Shared<Event>> events() const;

private:
    struct Entry {
        Shared<Event> event;
        /// Number of the last update that contained the record.
        std::size_t update;
    };

    /// Each event shares its record, so the address is not reused for another record.
    std::unordered_map<const MemoryRecord*, Entry> entries;
    std::size_t updates = 0;
};

} // namespace tidemark
