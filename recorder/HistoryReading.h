#pragma once

#include "core/base/Date.h"
#include "recorder/RecordedHistory.h"

#include <stop_token>

namespace tidemark {

/// What a command reads that only looks at the recorded history. A value that any thread may use.
struct HistoryReading {
    RecordedHistory history;
    /// The answer is read on a terminal that takes colours.
    bool colour = false;
    Date now = Date::now();
    /// Requested when nobody waits for the answer any more.
    std::stop_token stop{};
};

} // namespace tidemark
