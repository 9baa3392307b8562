#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "core/records/SystemActivity.h"

#include <vector>

namespace tidemark::ActivityEventBuilder {

/// The event of one record, with a copy of it.
Event event(const SystemActivity& activity);

/// The events of these records, in their order. Left out are records that belong to no timeline,
/// and each change of the network that a Wi-Fi link coming or going within five seconds explains:
/// people see one event then and not two. Takes about linear time. A pure function.
std::vector<Shared<Event>> build(const std::vector<SystemActivity>& from);

} // namespace tidemark::ActivityEventBuilder
