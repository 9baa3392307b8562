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
    /// Waits so many seconds. Returns false when `stop` is requested, before or during the wait;
    /// the coroutine is resumed from the event loop then, not within the request.
    virtual QCoro::Task<bool> sleep(double seconds, std::stop_token stop = {},
                                    Slack slack = Slack::none) = 0;

    /// The machine's own time.
    static AppClock& system();
};

} // namespace tidemark
