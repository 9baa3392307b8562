#pragma once

#include "core/base/Date.h"

#include <QCoroTask>
#include <stop_token>

namespace tidemark {

/// The source of time for the running application. Waits suspend a coroutine without blocking the
/// event loop. Main thread only.
class AppClock {
public:
    /// Whether a wait may end up to a second early or late, so that the system can combine wakeups.
    enum class Slack { none, allowed };

    virtual ~AppClock() = default;

    /// Wall time.
    virtual Date now() = 0;
    /// Seconds from an arbitrary start; never decreases.
    virtual double monotonicSeconds() = 0;
    /// Waits for `seconds`. Returns false when a stop is requested before or during the wait. A
    /// waiting coroutine is resumed by the event loop, never inside of the call of `request_stop`.
    virtual QCoro::Task<bool> sleep(double seconds, std::stop_token stop = {},
                                    Slack slack = Slack::none) = 0;

    /// The machine's own time.
    static AppClock& system();
};

} // namespace tidemark
