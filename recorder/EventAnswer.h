#pragma once

#include "core/base/Shared.h"
#include "core/records/Event.h"
#include "recorder/HistoryReading.h"

#include <string>
#include <vector>

namespace tidemark {

/// Events as the answer of a command: stored JSON, or a timeline for people; `nothing` where there
/// are none.
std::string eventAnswer(const std::vector<Shared<Event>>& events, const HistoryReading& reading,
                        bool asJson, const char* nothing);

} // namespace tidemark
