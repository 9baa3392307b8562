#pragma once

#include "app/base/NotificationCenter.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace tidemark {

/// Sleep, wake, power-off and the return to the user's session, as logind tells of them
/// (org.freedesktop.login1, https://www.freedesktop.org/wiki/Software/systemd/logind). Posts
/// `willSleep`, `didWake`, `willPowerOff`, `sessionDidBecomeActive` and
/// `sessionDidResignActive`. Without a bus, a logind or a session it posts nothing; a logind that
/// comes or comes back is followed from then on. Never blocks. Main thread only.
///
/// The session is the one that this process belongs to; for a process outside of any, such as a
/// service of the user, the one that logind calls the user's display.
class LogindMonitor final : public QObject {
    Q_OBJECT

public:
    /// `systemBus` is usually `QDBusConnection::systemBus()`. The center must outlive the monitor.
    LogindMonitor(QDBusConnection systemBus, NotificationCenter& notifications);
    ~LogindMonitor() override;

    /// A logind runs, and its signals come in.
    bool isFollowing() const { return !owner.isEmpty(); }
    bool isFollowingSession() const { return !session.isEmpty(); }
    /// Whether the user's session is the one in front; absent until that could be read.
    std::optional<bool> sessionActive() const { return isSessionActive; }

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
    QDBusServiceWatcher watcher;
    /// The unique name of the running logind; empty without one. Signals are taken from it alone:
    /// on the system bus anybody may send some.
    QString owner;
    /// Object path of the session that is followed; empty without one.
    QString session;
    bool isPreparingForSleep = false;
    std::optional<bool> isSessionActive;
};

} // namespace tidemark
