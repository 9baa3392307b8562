#pragma once

#include "core/memory/MemoryArchive.h"
#include "core/records/Event.h"

#include <unordered_map>
#include <vector>

namespace tidemark {

/// The events of the memory history, kept from one archive to the next. Archives share the records
/// that stay, so that after one more record one event is made, and none is compared.
class MemoryEventList {
public:
    /// By which events the list after an update differs from the one before.
    struct Change {
        std::vector<Shared<Event>> removed;
        std::vector<Shared<Event>> added;

        bool isEmpty() const { return removed.empty() && added.empty(); }
    };

    /// Takes the records of the next archive.
    Change update(const std::vector<Shared<MemoryRecord>>& records);
    /// All of them, in no order.
    std::vector<Shared<Event>> events() const;

private:
    struct Entry {
        Shared<Event> event;
        /// The last update that had the record.
        std::size_t update;
    };

    /// Each event shares its record, so that no address is that of another record meanwhile.
    std::unordered_map<const MemoryRecord*, Entry> entries;
    std::size_t updates = 0;
};

} // namespace tidemark
