#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "core/records/SystemActivity.h"

#include <vector>

namespace tidemark::ActivityEventBuilder {

/// The event of one record, which shares the record.
Event event(const Shared<SystemActivity>& record);

/// The events of these records, in their order. Leaves out kinds that are not shown, and each
/// change of the network within five seconds of the change of the Wi-Fi link that caused it, so
/// that one event is shown instead of two. Takes about linear time. A pure function.
std::vector<Shared<Event>> build(const std::vector<Shared<SystemActivity>>& from);

} // namespace tidemark::ActivityEventBuilder
