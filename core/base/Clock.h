#pragma once

#include "core/base/Date.h"

#include <stop_token>

namespace tidemark {

/// The source of time for the core. Tests replace it by one that they advance by hand.
class Clock {
public:
    virtual ~Clock() = default;

    /// Wall time.
    virtual Date now() = 0;
    /// Seconds from an arbitrary start; never decreases.
    virtual double monotonicSeconds() = 0;
    /// Waits so many seconds. Returns false at once when `stop` is requested, before or during the
    /// wait.
    virtual bool pause(double seconds, const std::stop_token& stop) = 0;

    /// The machine's own time. Any thread may use it.
    static Clock& system();
};

} // namespace tidemark
