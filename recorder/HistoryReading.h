#pragma once

#include "core/base/Date.h"
#include "recorder/RecordedHistory.h"

#include <stop_token>

namespace tidemark {

/// The input of a command that only reads the history. A value, usable on any thread.
struct HistoryReading {
    RecordedHistory history;
    /// True when the output goes to a terminal that supports colours.
    bool colour = false;
    Date now = Date::now();
    /// Requested when the client has disconnected.
    std::stop_token stop{};
};

} // namespace tidemark
