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
/// `willSleep`, `didWake`, `willPowerOff`, `sessionDidBecomeActive` and
/// `sessionDidResignActive`. Without a bus, a logind or a session it posts nothing; a logind that
/// comes or comes back is followed from then on; one that goes while the machine is about to sleep
/// makes it post `sleepAbandoned`. Never blocks. Main thread only.
///
/// It holds a delay lock of logind (https://systemd.io/INHIBITOR_LOCKS), so that the machine does
/// not sleep before the observers of `willSleep` are done. Where it gets none, the machine may
/// sleep before that.
///
/// The session is the one that this process belongs to; for a process outside of any, such as a
/// service of the user, the one that logind calls the user's display.
class LogindMonitor final : public QObject, public SleepAndSessionSource {
    Q_OBJECT

public:
    /// The most seconds that a sleep is delayed. By default, logind itself waits for 5.
    static constexpr double mostDelay = 4;

    /// `systemBus` is connected already, as by `SystemBus`, or not at all. The center and the clock
    /// must outlive the monitor.
    LogindMonitor(QDBusConnection systemBus, NotificationCenter& notifications,
                  Settle settleForSleep, AppClock& appClock = AppClock::system());
    ~LogindMonitor() override;

    /// A logind runs, and its signals come in.
    bool isFollowing() const { return !owner.isEmpty(); }
    bool isFollowingSession() const { return !session.isEmpty(); }
    /// Whether the user's session is the one in front; absent until that could be read.
    std::optional<bool> sessionActive() const { return isSessionActive; }
    /// A sleep waits for this.
    bool isDelayingSleep() const { return delayLock.isValid(); }

private Q_SLOTS:
    void setPreparingForSleep(bool preparing);
    void prepareForShutdown(bool preparing);
    void sessionCame();
    // The whole message: Qt refuses to connect a slot that takes an object path as long as nothing
    // else has registered that type.
    void sessionWent(const QDBusMessage& signal);
    void sessionChanged(const QString& interface, const QVariantMap& changed,
                        const QStringList& invalidated);

private:
    using Use = std::function<void(const QDBusMessage& reply)>;

    void follow(const QString& newOwner);
    /// Subscribes to the present owner of the service, or ends that.
    void setSubscribed(bool subscribed);
    void abandonSleep();
    void takeDelayLock();
    QCoro::Task<void> settleForSleep(std::uint64_t sleep);
    QCoro::Task<void> limitDelay(std::uint64_t sleep);
    void letSleep(std::uint64_t sleep);
    void findSession();
    void findDisplaySession();
    void followSession(const QString& path);
    void leaveSession();
    void readSessionActive();
    void setSessionActive(bool active);

    /// Calls a method of logind. `use` gets the reply, an error among them, unless the service has
    /// gone or been replaced meanwhile.
    void call(const QString& path, const QString& interface, const QString& method,
              const QVariantList& arguments, const Use& use);
    /// `use` gets an invalid value when the property can't be read.
    void readProperty(const QString& path, const QString& interface, const QString& name,
                      const std::function<void(const QVariant&)>& use);

    QDBusConnection bus;
    NotificationCenter& center;
    const Settle settle;
    AppClock& clock;
    QDBusServiceWatcher watcher;
    /// The unique name of the running logind; empty without one. Signals are taken from it alone:
    /// on the system bus anybody may send some.
    QString owner;
    /// Object path of the session that is followed; empty without one.
    QString session;
    bool isPreparingForSleep = false;
    /// Grows with every sleep, and at its end: what began under another number is stale.
    std::uint64_t sleeps = 0;
    /// The sleep that is being prepared needs no delay any more.
    bool isReadyToSleep = false;
    /// Whoever has it open delays sleeps; invalid without a lock.
    QDBusUnixFileDescriptor delayLock;
    std::optional<bool> isSessionActive;
    TaskScope tasks;
};

} // namespace tidemark
