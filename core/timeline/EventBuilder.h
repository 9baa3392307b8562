#pragma once

#include "core/records/Event.h"
#include "core/records/Snapshot.h"

#include <vector>

namespace tidemark::EventBuilder {

/// The events that the comparison of two snapshots gives: one a change, in the order of the
/// changes, with the background items that an application brought along folded into its event.
/// Ids are made of both snapshots' ids and the number of the change, so they are stable; numbers
/// may have gaps. A pure function.
std::vector<Event> build(const Snapshot& from, const Snapshot& to);

} // namespace tidemark::EventBuilder
