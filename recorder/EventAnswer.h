#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "recorder/HistoryReading.h"

#include <string>
#include <vector>

namespace tidemark {

/// The output of a command that lists events: stored JSON or a timeline as text; `nothing` if there
/// are none.
std::string eventAnswer(const std::vector<Shared<Event>>& events, const HistoryReading& reading,
                        bool asJson, const char* nothing);

} // namespace tidemark
