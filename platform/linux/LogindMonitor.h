#pragma once

#include "app/base/AppClock.h"
#include "app/base/NotificationCenter.h"
#include "app/base/TaskScope.h"
#include "app/ports/SleepAndSessionSource.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <optional>

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
class LogindMonitor final : public QObject, public SleepAndSessionSource {
    Q_OBJECT

public:
    /// The longest delay of a sleep in seconds. logind itself waits for 5 by default.
    static constexpr double mostDelay = 4;

    /// `bus` is a connection made by `SystemBus`, or an invalid one. `center` and `clock` must
    /// outlive the monitor.
    LogindMonitor(const QDBusConnection& bus, NotificationCenter& center, Settle settle,
                  AppClock& clock = AppClock::system());
    ~LogindMonitor() override;

    /// True while logind runs and its signals are received.
    bool isFollowing() const { return !owner.isEmpty(); }
    bool isFollowingSession() const { return !session.isEmpty(); }
    /// Whether the user's session is the active one; absent until that was read.
    std::optional<bool> sessionActive() const { return isSessionActive; }
    /// True while a delay lock is held.
    bool isDelayingSleep() const { return delayLock.isValid(); }

private Q_SLOTS:
    void setPreparingForSleep(bool preparing);
    void prepareForShutdown(bool preparing);
    void sessionAdded();
    // Takes the whole message, because Qt does not connect a slot with an object path unless that
    // type was registered elsewhere.
    void sessionRemoved(const QDBusMessage& signal);
    void sessionChanged(const QString& interface, const QVariantMap& changed,
                        const QStringList& invalidated);

private:
    using Use = std::function<void(const QDBusMessage& reply)>;

    void follow(const QString& newOwner);
    /// Subscribes to or unsubscribes from the signals of `owner`.
    void setSubscribed(bool subscribed);
    void abandonSleep();
    void takeDelayLock();
    QCoro::Task<void> settleForSleep(std::uint64_t sleep);
    QCoro::Task<void> limitDelay(std::uint64_t sleep);
    void releaseDelay(std::uint64_t sleep);
    void findSession();
    void findDisplaySession();
    void followSession(const QString& path);
    void leaveSession();
    void readSessionActive();
    void setSessionActive(bool active);

    /// Calls a method of logind. `use` is called with the reply or error, unless the service has
    /// stopped or been replaced by then.
    void call(const QString& path, const QString& interface, const QString& method,
              const QVariantList& arguments, const Use& use);
    /// `use` is called with an invalid value when the property can't be read.
    void readProperty(const QString& path, const QString& interface, const QString& name,
                      const std::function<void(const QVariant&)>& use);

    QDBusConnection bus;
    NotificationCenter& center;
    const Settle settle;
    AppClock& clock;
    QDBusServiceWatcher watcher;
    /// The unique name of the running logind; empty when there is none. Only its signals are
    /// handled: any process may send signals on the system bus.
    QString owner;
    /// Object path of the followed session; empty when there is none.
    QString session;
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
