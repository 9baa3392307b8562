#pragma once

#include "core/base/Clock.h"

#include <stop_token>

namespace tidemark {

/// The time that reading one place may take. The loops of a capture check it before every entry, so
/// that a slow or hostile place delays neither a stop nor the capture.
class ReadingBudget {
public:
    ReadingBudget(double seconds, Clock& clock, const std::stop_token& stop)
        : clock(clock), stop(stop), deadline(clock.monotonicSeconds() + seconds) {}

    /// True when the time is over or a stop was requested. The place counts as incomplete then.
    bool isSpent() const { return stop.stop_requested() || clock.monotonicSeconds() > deadline; }

private:
    Clock& clock;
    std::stop_token stop;
    double deadline;
};

} // namespace tidemark
