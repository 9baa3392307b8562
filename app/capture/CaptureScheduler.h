#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"

#include <functional>
#include <vector>

namespace tidemark {

/// Calls a check regularly and whenever the user or the machine returns. The check decides whether
/// a capture is due. Main thread only.
class CaptureScheduler {
public:
    /// Must not fail. May take any time.
    using Check = std::function<QCoro::Task<void>()>;
    /// Runs a check repeatedly until the stop is requested.
    using Heartbeat = std::function<QCoro::Task<void>(Check, std::stop_token)>;

    static constexpr double heartbeatInterval = 60;

    /// `applicationCenter` posts that the application became active; `workspaceCenter` that the
    /// machine woke and that the user's session became active. Both must outlive this object.
    CaptureScheduler(NotificationCenter& applicationCenter, NotificationCenter& workspaceCenter,
                     Heartbeat heartbeat);
    ~CaptureScheduler() { stop(); }

    /// Does nothing when already started. A check that becomes due while one is running is dropped;
    /// the next heartbeat checks again.
    void start(Check check);
    /// A running check continues to its end.
    void stop();

    /// One check a minute, counted from the end of the previous one, with slack so that the system
    /// can combine wakeups. The clock must outlive the scheduler.
    static Heartbeat backgroundHeartbeat(AppClock& clock);

private:
    QCoro::Task<void> runCheck();

    NotificationCenter& applicationCenter;
    NotificationCenter& workspaceCenter;
    const Heartbeat heartbeat;
    std::vector<NotificationCenter::Token> observers;
    std::stop_source heartbeatStop{std::nostopstate};
    Check check;
    bool checking = false;
    /// Queued calls are dropped when this is destroyed.
    QObject context;
    TaskScope tasks;
};

} // namespace tidemark
