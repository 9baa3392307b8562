#include "platform/linux/DesktopNotifier.h"

#include <QStringList>
#include <utility>

namespace tidemark {

namespace {

const QString notificationService = QStringLiteral("org.freedesktop.Notifications");
const QString notificationPath = QStringLiteral("/org/freedesktop/Notifications");
const QString notificationInterface = QStringLiteral("org.freedesktop.Notifications");
/// The action of a click on the notification itself.
const QString clicked = QStringLiteral("default");
/// The service decides how long a notification is shown.
constexpr int usualTime = -1;

bool isAbout(const QDBusMessage& signal, unsigned notification) {
    return notification != 0 && signal.arguments().value(0).toUInt() == notification;
}

} // namespace

DesktopNotifier::DesktopNotifier(const MessageBus& bus)
    : service(bus, notificationService, [this] { follow(); }) {}

void DesktopNotifier::follow() {
    shown = 0;
    isSending = isOutdated = false;
    takesMarkup.reset();
    actions.reset();
    closings.reset();
    if (!service.isThere()) {
        current.reset();
        return;
    }
    actions =
        service.subscribe(notificationPath, notificationInterface, QStringLiteral("ActionInvoked"),
                          [this](const auto& signal) { takeAction(signal); });
    closings = service.subscribe(notificationPath, notificationInterface,
                                 QStringLiteral("NotificationClosed"),
                                 [this](const auto& signal) { takeClosing(signal); });
    service.call(notificationPath, notificationInterface, QStringLiteral("GetCapabilities"), {},
                 [this](const auto& reply) { takeCapabilities(reply); });
}

void DesktopNotifier::takeCapabilities(const QDBusMessage& reply) {
    const auto capabilities = reply.arguments().value(0).toStringList();
    takesMarkup = capabilities.contains(QStringLiteral("body-markup"));
    if (current)
        send();
}

void DesktopNotifier::show(Notification notification) {
    if (service.state() == BusService::State::absent)
        return;
    current = std::move(notification);
    if (takesMarkup)
        send();
}

void DesktopNotifier::send() {
    isOutdated = isSending;
    if (std::exchange(isSending, true))
        return;
    QString body = QString::fromStdString(current->body);
    if (*takesMarkup)
        body = body.toHtmlEscaped();
    QStringList offered;
    if (current->activated)
        offered = {clicked, QStringLiteral("Show")};
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("app.tidemark")}};
    service.call(notificationPath, notificationInterface, QStringLiteral("Notify"),
                 {QStringLiteral("Tidemark"), shown, QStringLiteral("app.tidemark"),
                  QString::fromStdString(current->title), body, offered, hints, usualTime},
                 [this](const QDBusMessage& reply) { takeNumber(reply); });
}

void DesktopNotifier::takeNumber(const QDBusMessage& reply) {
    isSending = false;
    const bool isShown = reply.type() == QDBusMessage::ReplyMessage;
    shown = isShown ? reply.arguments().value(0).toUInt() : 0;
    if (isOutdated)
        send();
}

void DesktopNotifier::takeAction(const QDBusMessage& signal) {
    if (!isAbout(signal, shown) || signal.arguments().value(1).toString() != clicked)
        return;
    // A copy, because the function may call `show`, which replaces `current`.
    const auto activated = current ? current->activated : nullptr;
    if (activated)
        activated();
}

void DesktopNotifier::takeClosing(const QDBusMessage& signal) {
    if (!isAbout(signal, shown))
        return;
    shown = 0;
    // While a notification is being sent, the closed one is the one before it.
    if (!isSending)
        current.reset();
}

} // namespace tidemark
