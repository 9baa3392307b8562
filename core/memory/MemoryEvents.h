#pragma once

#include "core/memory/MemoryArchive.h"
#include "core/records/Event.h"

/// Makes events of the memory history.
namespace tidemark::MemoryEvents {

/// The event of one record, which it shares.
Event event(const Shared<MemoryRecord>& record);

/// The events of all records, in the order of the archive.
std::vector<Event> events(const MemoryArchive& archive);

} // namespace tidemark::MemoryEvents
