#include "platform/linux/PortalAppearance.h"

#include "platform/linux/PortalNames.h"

#include <QDBusVariant>
#include <utility>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
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

PortalAppearance::PortalAppearance(const MessageBus& session, Changed changed)
    : changed(std::move(changed)), portal(session, portalService, [this] { follow(); }) {}

void PortalAppearance::follow() {
    changes = portal.subscribe(
        portalPath, settingsInterface, u"SettingChanged"_s,
        [this](const QDBusMessage& signal) {
            take(signal.arguments().value(1).toString(), signal.arguments().value(2));
        },
        appearance);
    read(schemeKey);
    read(contrastKey);
}

void PortalAppearance::read(const QString& key) {
    portal.ask(portalPath, settingsInterface, u"Read"_s, {appearance, key},
               [this, key](const QDBusMessage& reply) {
                   if (reply.type() == QDBusMessage::ReplyMessage)
                       take(key, reply.arguments().value(0));
               });
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
