#include "app/capture/CaptureScheduler.h"

#include <QScopeGuard>
#include <utility>

namespace tidemark {

namespace {

QCoro::Task<void> beat(AppClock* clock, CaptureScheduler::Check check, std::stop_token stop) {
    // `co_await` is not in the condition of the loop, where GCC 12 destroys the awaited task twice.
    for (;;) {
        const bool whole = co_await clock->sleep(CaptureScheduler::heartbeatInterval, stop,
                                                 AppClock::Slack::allowed);
        if (!whole)
            co_return;
        try {
            co_await check();
        } catch (const std::exception& error) {
            qCritical("A check of the schedule failed: %s", error.what());
        }
    }
}

} // namespace

CaptureScheduler::CaptureScheduler(NotificationCenter& applicationCenter,
                                   NotificationCenter& workspaceCenter, Heartbeat heartbeat)
    : applicationCenter(applicationCenter), workspaceCenter(workspaceCenter),
      heartbeat(std::move(heartbeat)) {}

CaptureScheduler::Heartbeat CaptureScheduler::backgroundHeartbeat(AppClock& clock) {
    return [&clock](Check check, std::stop_token stop) {
        return beat(&clock, std::move(check), std::move(stop));
    };
}

void CaptureScheduler::start(Check newCheck) {
    if (check)
        return;
    check = std::move(newCheck);
    heartbeatStop = std::stop_source();
    tasks.start(heartbeat([this] { return runCheck(); }, heartbeatStop.get_token()));
    const auto observe = [this](NotificationCenter& center, Notification notification) {
        // Starts the check after the notification, when all other observers have been called.
        observers.push_back(center.observe(notification, [this] {
            QMetaObject::invokeMethod(
                &context, [this] { tasks.start(runCheck()); }, Qt::QueuedConnection);
        }));
    };
    observe(applicationCenter, notification::applicationDidBecomeActive);
    observe(workspaceCenter, notification::didWake);
    observe(workspaceCenter, notification::sessionDidBecomeActive);
}

void CaptureScheduler::stop() {
    check = nullptr;
    heartbeatStop.request_stop();
    observers.clear();
}

QCoro::Task<void> CaptureScheduler::runCheck() {
    const auto hold = tasks.hold();
    if (!check || checking)
        co_return;
    checking = true;
    const auto done = qScopeGuard([this] { checking = false; });
    // A copy, since `stop` clears the member.
    const Check current = check;
    co_await current();
}

} // namespace tidemark
