#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"
#include "app/ports/SleepAndSessionSource.h"
#include "platform/linux/BusService.h"
#include "platform/linux/LogindSession.h"

#include <QDBusUnixFileDescriptor>
#include <optional>
#include <vector>

namespace tidemark {

/// Follows sleep, wake, power-off and the switches to and from the user's session, as logind
/// reports them (org.freedesktop.login1, https://www.freedesktop.org/wiki/Software/systemd/logind).
/// Posts `willSleep`, `didWake`, `willPowerOff`, `sessionDidBecomeActive` and
/// `sessionDidResignActive`. Follows logind whenever it starts or restarts; without a bus or logind
/// it posts nothing, and without a session nothing about the session. If logind stops while the
/// machine is about to sleep, posts `sleepAbandoned`. Does not block. Main thread only.
///
/// It holds a delay lock of logind (https://systemd.io/INHIBITOR_LOCKS), so that the machine does
/// not sleep before the observers of `willSleep` are done. If logind grants none, the machine may
/// sleep earlier.
class LogindMonitor final : public SleepAndSessionSource {
public:
    /// The longest delay of a sleep in seconds. logind itself waits for 5 by default.
    static constexpr double mostDelay = 4;

    /// `center` and `clock` must outlive the monitor.
    LogindMonitor(const MessageBus& bus, NotificationCenter& center, Settle settle,
                  AppClock& clock = AppClock::system());
    ~LogindMonitor() override;

    /// True while logind runs and its signals are received.
    bool isFollowing() const { return logind->isThere(); }
    bool isFollowingSession() const { return session->isFollowing(); }
    /// Whether the user's session is the active one; absent until it is known.
    std::optional<bool> sessionActive() const { return isSessionActive; }
    /// True while a delay lock is held.
    bool isDelayingSleep() const { return delayLock.isValid(); }

private:
    void follow();
    void subscribe();
    void setPreparingForSleep(bool preparing);
    void abandonSleep();
    void takeDelayLock();
    QCoro::Task<void> settleForSleep(std::uint64_t sleep);
    QCoro::Task<void> limitDelay(std::uint64_t sleep);
    void releaseDelay(std::uint64_t sleep);
    void prepareForShutdown(bool preparing);
    void setSessionActive(std::optional<bool> value);

    NotificationCenter& center;
    const Settle settle;
    AppClock& clock;
    // Absent only while this object is being destroyed.
    std::optional<BusService> logind;
    std::vector<BusService::Subscription> signalsOfManager;
    std::optional<LogindSession> session;
    bool isPreparingForSleep = false;
    /// Incremented at the beginning and the end of every sleep, so that work begun for an earlier
    /// one does not release the delay lock of the present one.
    std::uint64_t sleeps = 0;
    /// True when the preparations for the present sleep are finished or have taken `mostDelay`.
    bool isReadyToSleep = false;
    /// The delay lock: sleep is delayed while this is open. Invalid without a lock.
    QDBusUnixFileDescriptor delayLock;
    std::optional<bool> isSessionActive;
    TaskScope tasks;
};

} // namespace tidemark
