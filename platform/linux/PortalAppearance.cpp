#include "platform/linux/PortalAppearance.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString schemeKey = u"color-scheme"_s;
const QString contrastKey = u"contrast"_s;

enum ColorScheme : unsigned { noPreference = 0, preferDark = 1, preferLight = 2 };

/// "Read" wraps its value into a variant of a variant.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

PortalAppearance::PortalAppearance(const QDBusConnection& session, Changed changed)
    : bus(session), changed(std::move(changed)) {
    bus.connect(service, path, interface, u"SettingChanged"_s, this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    read(schemeKey);
    read(contrastKey);
}

void PortalAppearance::read(const QString& key) {
    auto question = QDBusMessage::createMethodCall(service, path, interface, u"Read"_s);
    question.setArguments({appearance, key});
    question.setAutoStartService(false);
    auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this, key](QDBusPendingCallWatcher* done) {
                done->deleteLater();
                const auto reply = done->reply();
                if (reply.type() == QDBusMessage::ReplyMessage)
                    take(key, reply.arguments().value(0));
            });
}

void PortalAppearance::settingChanged(const QString& name, const QString& key,
                                      const QDBusVariant& value) {
    if (name == appearance)
        take(key, value.variant());
}

void PortalAppearance::take(const QString& key, const QVariant& value) {
    const unsigned number = unwrapped(value).toUInt();
    SystemAppearance next = current;
    if (key == contrastKey)
        next.hasHighContrast = number == 1;
    else if (key == schemeKey)
        next.isDark = number == preferDark    ? std::optional(true)
                      : number == preferLight ? std::optional(false)
                                              : std::nullopt;
    if (next == current)
        return;
    current = next;
    changed(current);
}

} // namespace tidemark
