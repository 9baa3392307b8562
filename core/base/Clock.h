#pragma once

#include "core/base/Date.h"

#include <stop_token>

namespace tidemark {

/// Time as the core asks for it, so that a test can drive hours in no time.
class Clock {
public:
    virtual ~Clock() = default;

    /// Wall time.
    virtual Date now() = 0;
    /// Seconds that only ever grow, from an arbitrary start.
    virtual double monotonicSeconds() = 0;
    /// Waits. False when `stop` was requested, before the wait or during it.
    virtual bool pause(double seconds, const std::stop_token& stop) = 0;

    /// The machine's own time. Any thread may use it.
    static Clock& system();
};

} // namespace tidemark
