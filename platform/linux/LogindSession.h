#pragma once

#include "platform/linux/BusService.h"

#include <functional>
#include <optional>
#include <vector>

namespace tidemark {

/// Follows one property of the user's session in logind
/// (https://www.freedesktop.org/software/systemd/man/org.freedesktop.login1.html). Main thread
/// only.
///
/// The session is that of this process; for a process outside of a session, such as a user service,
/// it is the one that logind has as the user's `Display`.
class LogindSession {
public:
    using Use = std::function<void(std::optional<bool> value)>;

    /// `property` is the name of a boolean property. `use` is called from the event loop with each
    /// value of it, even an unchanged one. The value is absent when there is no session any more or
    /// logind has stopped.
    LogindSession(const MessageBus& bus, QString property, Use use);

    bool isFollowing() const { return !session.isEmpty(); }

private:
    void follow();
    void find();
    void findDisplay();
    void followSession(const QString& path);
    void leave();
    void read();
    void change(const QDBusMessage& signal);

    const QString property;
    const Use use;
    BusService logind;
    std::vector<BusService::Subscription> signalsOfManager;
    /// Object path of the followed session; empty when there is none.
    QString session;
    BusService::Subscription signalsOfSession;
};

} // namespace tidemark
