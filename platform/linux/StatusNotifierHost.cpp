#include "platform/linux/StatusNotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.kde.StatusNotifierWatcher"_s;
const QString path = u"/StatusNotifierWatcher"_s;

/// Calls `use` with the reply, unless `receiver` is gone by then.
template <class Use>
void call(QDBusConnection& bus, QDBusMessage question, QObject* receiver, Use use) {
    question.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(question), receiver);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, receiver,
                     [use = std::move(use)](QDBusPendingCallWatcher* done) {
                         done->deleteLater();
                         use(done->reply());
                     });
}

} // namespace

StatusNotifierHost::StatusNotifierHost(const QDBusConnection& session,
                                       std::function<void(bool)> changed)
    : bus(session), changed(std::move(changed)),
      watcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& next) { follow(next); });
    auto question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    question.setArguments({service});
    call(bus, question, this, [this](const QDBusMessage& reply) {
        if (owner.isEmpty() && reply.type() == QDBusMessage::ReplyMessage)
            follow(reply.arguments().value(0).toString());
    });
}

void StatusNotifierHost::follow(const QString& next) {
    const auto setSubscribed = [this](bool subscribed) {
        for (const auto& signal :
             {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s}) {
            if (subscribed)
                bus.connect(owner, path, service, signal, this, SLOT(readHost()));
            else
                bus.disconnect(owner, path, service, signal, this, SLOT(readHost()));
        }
    };
    if (!owner.isEmpty())
        setSubscribed(false);
    setThere(false);
    owner = next;
    if (owner.isEmpty())
        return;
    setSubscribed(true);
    readHost();
}

void StatusNotifierHost::readHost() {
    auto question =
        QDBusMessage::createMethodCall(owner, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({service, u"IsStatusNotifierHostRegistered"_s});
    call(bus, question, this, [this, asked = owner](const QDBusMessage& reply) {
        if (asked != owner)
            return;
        const auto value = reply.arguments().value(0).value<QDBusVariant>().variant();
        setThere(reply.type() == QDBusMessage::ReplyMessage && value.toBool());
    });
}

void StatusNotifierHost::setThere(bool there) {
    if (there == isThere)
        return;
    isThere = there;
    changed(isThere);
}

} // namespace tidemark
