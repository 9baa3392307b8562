#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"
#include "app/ports/SleepAndSessionSource.h"
#include "platform/linux/BusService.h"

#include <QDBusUnixFileDescriptor>
#include <optional>
#include <vector>

namespace tidemark {

/// Sleep, wake, power-off and the return to the user's session, as logind reports them
/// (org.freedesktop.login1, https://www.freedesktop.org/wiki/Software/systemd/logind). Posts
/// `willSleep`, `didWake`, `willPowerOff`, `sessionDidBecomeActive` and `sessionDidResignActive`.
/// Follows logind whenever it starts or restarts; without a bus, logind or session it posts
/// nothing. If logind stops while the machine is about to sleep, posts `sleepAbandoned`. Does not
/// block. Main thread only.
///
/// It holds a delay lock of logind (https://systemd.io/INHIBITOR_LOCKS), so that the machine does
/// not sleep before the observers of `willSleep` are done. If logind grants none, the machine may
/// sleep earlier.
///
/// The session is that of this process; for a process outside of a session, such as a user service,
/// it is the one that logind has as the user's `Display`.
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
    bool isFollowingSession() const { return !session.isEmpty(); }
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
    void sessionAdded();
    void sessionRemoved(const QString& path);
    void findSession();
    void findDisplaySession();
    void followSession(const QString& path);
    void leaveSession();
    void sessionChanged(const QVariantMap& changed, const QStringList& invalidated);
    void readSessionActive();
    void setSessionActive(bool active);

    NotificationCenter& center;
    const Settle settle;
    AppClock& clock;
    /// Absent only while this object is being destroyed.
    std::optional<BusService> logind;
    std::vector<BusService::Subscription> signalsOfManager;
    /// Object path of the followed session; empty when there is none.
    QString session;
    BusService::Subscription signalsOfSession;
    bool isPreparingForSleep = false;
    /// Incremented at the begin and the end of every sleep; replies to calls made under another
    /// number are stale.
    std::uint64_t sleeps = 0;
    /// True when the preparations for the present sleep are finished.
    bool isReadyToSleep = false;
    /// The delay lock: sleep is delayed while this is open. Invalid without a lock.
    QDBusUnixFileDescriptor delayLock;
    std::optional<bool> isSessionActive;
    TaskScope tasks;
};

} // namespace tidemark
