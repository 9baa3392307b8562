#pragma once

#include "core/base/Clock.h"

#include <stop_token>

namespace tidemark {

/// The time that reading one place may take. The loops of a capture ask before every entry, so that
/// a place that is slow, or was made to be, holds up neither a stop nor the capture.
class ReadingBudget {
public:
    ReadingBudget(double seconds, Clock& time, const std::stop_token& token)
        : clock(time), stop(token), deadline(time.monotonicSeconds() + seconds) {}

    /// True when the time is over or a stop was requested: what was not read by now is unknown.
    bool isSpent() const { return stop.stop_requested() || clock.monotonicSeconds() > deadline; }

private:
    Clock& clock;
    std::stop_token stop;
    double deadline;
};

} // namespace tidemark
