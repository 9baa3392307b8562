#pragma once

#include "core/base/Date.h"

#include <QCoroTask>
#include <stop_token>

namespace tidemark {

/// Time as the running application asks for it: waits suspend a coroutine and leave the event
/// loop free. Main thread only.
class AppClock {
public:
    /// Whether a wait may end up to a second early or late, so that the system can wake up once
    /// for many.
    enum class Slack { none, allowed };

    virtual ~AppClock() = default;

    /// Wall time.
    virtual Date now() = 0;
    /// Seconds that only ever grow, from an arbitrary start.
    virtual double monotonicSeconds() = 0;
    /// Waits. False when `stop` was requested, before the wait or during it; the coroutine then
    /// goes on from the event loop, never inside of the request.
    virtual QCoro::Task<bool> sleep(double seconds, std::stop_token stop = {},
                                    Slack slack = Slack::none) = 0;

    /// The machine's own time.
    static AppClock& system();
};

} // namespace tidemark
