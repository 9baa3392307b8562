#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"

#include <functional>
#include <vector>

namespace tidemark {

/// Asks regularly, and whenever the user or the machine comes back, whether a capture is due. It
/// knows no schedule: the check does. Main thread only.
class CaptureScheduler {
public:
    /// Fails never; what a check asks for may take as long as it likes.
    using Check = std::function<QCoro::Task<void>()>;
    /// Runs a check time and again, and ends when it is told to stop.
    using Heartbeat = std::function<QCoro::Task<void>(Check, std::stop_token)>;

    static constexpr double heartbeatInterval = 60;

    /// `application` posts that the application became active; `workspace` that the machine woke
    /// and that the user's session became active. Both outlive this.
    CaptureScheduler(NotificationCenter& application, NotificationCenter& workspace,
                     Heartbeat heartbeat);
    ~CaptureScheduler() { stop(); }

    /// Does nothing when already started. Checks that come while one runs are dropped: the next
    /// beat is their retry.
    void start(Check check);
    /// A running check goes on to its end.
    void stop();

    /// One check a minute, counted from the end of the one before, with the slack that lets the
    /// system wake up for many at once. The clock outlives the scheduler.
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
    /// What is queued for it ends with this.
    QObject context;
    TaskScope tasks;
};

} // namespace tidemark
