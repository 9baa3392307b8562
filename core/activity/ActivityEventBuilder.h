#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "core/records/SystemActivity.h"

#include <vector>

namespace tidemark::ActivityEventBuilder {

/// The event of one record, with a copy of the record.
Event event(const SystemActivity& activity);

/// The events of these records, in their order. Leaves out kinds that are not shown, and each
/// change of the network within five seconds of the change of the Wi-Fi link that caused it, so
/// that people see one event and not two. Takes about linear time. A pure function.
std::vector<Shared<Event>> build(const std::vector<SystemActivity>& from);

} // namespace tidemark::ActivityEventBuilder
