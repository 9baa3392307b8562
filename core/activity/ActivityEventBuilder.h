#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "core/records/SystemActivity.h"

#include <vector>

namespace tidemark::ActivityEventBuilder {

/// The event of one record, which shares the record.
Event event(const Shared<SystemActivity>& record);

/// The events of these records, in their order, without those of kinds that are not shown. When
/// the Wi-Fi link and the network change within five seconds of each other, only the change of the
/// link becomes an event, because it caused the other one. Takes about linear time. A pure
/// function.
std::vector<Shared<Event>> build(const std::vector<Shared<SystemActivity>>& from);

} // namespace tidemark::ActivityEventBuilder
