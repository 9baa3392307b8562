#pragma once

#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <vector>

namespace tidemark::EventBuilder {

/// The events for the differences of two snapshots: one per change, in the order of the changes.
/// There is none for a diagnostic report that disappeared. If the snapshots are at most an hour
/// apart, background items installed with an application are part of its event. Ids are made
/// of both snapshots' ids and the index of the change, so they are stable; the indices may have
/// gaps. A pure function.
std::vector<Event> build(const Snapshot& from, const Snapshot& to);

} // namespace tidemark::EventBuilder
