#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "core/records/SystemActivity.h"

#include <vector>

namespace tidemark::ActivityEventBuilder {

/// The event of one record, which shares the record.
Event event(const Shared<SystemActivity>& record);

/// The events of these records, in their order, without those of kinds that are not shown. The
/// start or end of a network connection whose only interface is Wi-Fi is left out when the Wi-Fi
/// link came up or went down within five seconds of that: the change of the link is the cause, and
/// an event itself. Takes about linear time. A pure function.
std::vector<Shared<Event>> build(const std::vector<Shared<SystemActivity>>& from);

} // namespace tidemark::ActivityEventBuilder
