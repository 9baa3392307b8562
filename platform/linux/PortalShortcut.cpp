#include "platform/linux/PortalShortcut.h"

#include "app/ports/ApplicationSource.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <algorithm>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

/// One shortcut, as the portal takes it.
struct PortalKeys {
    QString id;
    QVariantMap options;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalKeys& keys) {
    argument.beginStructure();
    argument << keys.id << keys.options;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalKeys& keys) {
    argument.beginStructure();
    argument >> keys.id >> keys.options;
    argument.endStructure();
    return argument;
}

const QString portalName = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString shortcuts = u"org.freedesktop.portal.GlobalShortcuts"_s;
const QString registry = u"org.freedesktop.host.portal.Registry"_s;
const QString requests = u"org.freedesktop.portal.Request"_s;
const QString searchId = u"search"_s;

/// Whether the keys are among those that the user has confirmed.
bool hasSearchKeys(const QVariantMap& results) {
    const auto list = results.value(u"shortcuts"_s).value<QDBusArgument>();
    if (list.currentSignature() != u"a(sa{sv})"_s)
        return false;
    const auto confirmed = qdbus_cast<QList<PortalKeys>>(list);
    return std::ranges::find(confirmed, searchId, &PortalKeys::id) != confirmed.end();
}

/// A session is named by a text, in some releases by a path.
QString sessionIn(const QVariantMap& results) {
    const auto handle = results.value(u"session_handle"_s);
    return handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
               ? handle.value<QDBusObjectPath>().path()
               : handle.toString();
}

} // namespace

PortalShortcut::PortalShortcut(const QDBusConnection& session, Observer wanted)
    : sender(session.baseService().mid(1).replace(u'.', u'_')), observer(std::move(wanted)),
      portal(session, portalName, [this] { begin(); }) {
    qDBusRegisterMetaType<PortalKeys>();
    qDBusRegisterMetaType<QList<PortalKeys>>();
}

void PortalShortcut::begin() {
    sessionPath.clear();
    answer.reset();
    presses.reset();
    observer.availabilityChanged(false);
    if (!portal.isThere())
        return;
    // Portals know programs that were started from a terminal or by a unit of another name only by
    // this. Earlier releases don't have it.
    portal.call(portalPath, registry, u"Register"_s,
                {QString::fromUtf8(ApplicationSource::ownIdentifier.data()), QVariantMap()},
                [this](const QDBusMessage&) { createSession(); });
}

void PortalShortcut::createSession() {
    request(u"CreateSession"_s, {}, {{u"session_handle_token"_s, u"tidemark"_s}},
            [this](const QVariantMap& results) {
                sessionPath = sessionIn(results);
                if (!sessionPath.isEmpty())
                    listKeys();
            });
}

void PortalShortcut::listKeys() {
    request(u"ListShortcuts"_s, {QVariant::fromValue(QDBusObjectPath(sessionPath))}, {},
            [this](const QVariantMap& results) {
                if (hasSearchKeys(results))
                    follow(results);
                else
                    bindKeys();
            });
}

void PortalShortcut::bindKeys() {
    const PortalKeys keys{searchId,
                          {{u"description"_s, u"Search Tidemark"_s},
                           {u"preferred_trigger"_s, u"CTRL+SHIFT+space"_s}}};
    request(u"BindShortcuts"_s,
            {QVariant::fromValue(QDBusObjectPath(sessionPath)),
             QVariant::fromValue(QList<PortalKeys>{keys}), QString()},
            {}, [this](const QVariantMap& results) { follow(results); });
}

void PortalShortcut::follow(const QVariantMap& results) {
    if (!hasSearchKeys(results))
        return;
    presses =
        portal.subscribe(portalPath, shortcuts, u"Activated"_s, [this](const QDBusMessage& signal) {
            const auto arguments = signal.arguments();
            if (arguments.value(0).value<QDBusObjectPath>().path() == sessionPath
                && arguments.value(1).toString() == searchId)
                observer.pressed();
        });
    observer.availabilityChanged(true);
}

void PortalShortcut::request(const QString& method, QVariantList arguments, QVariantMap options,
                             UseResults use) {
    const QString token = u"tidemark%1"_s.arg(++lastRequest);
    answer =
        portal.subscribe(portalPath + u"/request/"_s + sender + u'/' + token, requests,
                         u"Response"_s, [this, use = std::move(use)](const QDBusMessage& signal) {
                             answer.reset();
                             const auto values = signal.arguments();
                             // Another number is a refusal, by the user or the portal.
                             if (values.value(0).toUInt() == 0)
                                 use(qdbus_cast<QVariantMap>(values.value(1)));
                         });
    options[u"handle_token"_s] = token;
    arguments.append(options);
    portal.call(portalPath, shortcuts, method, arguments, [](const QDBusMessage&) {});
}

} // namespace tidemark
