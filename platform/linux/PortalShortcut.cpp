#include "platform/linux/PortalShortcut.h"

#include "app/ports/ApplicationSource.h"
#include "platform/linux/BoundShortcut.h"
#include "platform/linux/PortalNames.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <algorithm>
#include <utility>

namespace tidemark {

using namespace Qt::StringLiterals;

namespace {

const QString shortcutsInterface = u"org.freedesktop.portal.GlobalShortcuts"_s;
const QString registry = u"org.freedesktop.host.portal.Registry"_s;
const QString request = u"org.freedesktop.portal.Request"_s;
const QString anyRequest;
const QString ownShortcut = u"search"_s;

/// A session is named by a text, in some releases by a path.
QString sessionIn(const QVariantMap& results) {
    const auto handle = results.value(u"session_handle"_s);
    return handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
               ? handle.value<QDBusObjectPath>().path()
               : handle.toString();
}

} // namespace

PortalShortcut::PortalShortcut(const MessageBus& bus, Observer observer)
    : observer(std::move(observer)), portal(bus, portalService, [this] { follow(); }) {
    qDBusRegisterMetaType<BoundShortcut>();
    qDBusRegisterMetaType<QList<BoundShortcut>>();
}

void PortalShortcut::follow() {
    session.clear();
    response.reset();
    activated.reset();
    changed.reset();
    if (!portal.isThere())
        return report({.obstacle = std::string(notOffered)});
    report({});
    portal.readProperty(portalPath, shortcutsInterface, u"version"_s,
                        [this](const QVariant& version) {
                            if (version.isValid())
                                createSession();
                            else
                                report({.obstacle = std::string(notOffered)});
                        });
}

void PortalShortcut::createSession() {
    // Newer portals refuse a program whose identifier they can't tell; older ones lack this method.
    portal.call(portalPath, registry, u"Register"_s,
                {QString::fromUtf8(ApplicationSource::ownIdentifier), QVariantMap()},
                [](const auto&) {});
    activated = portal.subscribe(
        portalPath, shortcutsInterface, u"Activated"_s, [this](const auto& signal) {
            const auto from = signal.arguments().value(0).template value<QDBusObjectPath>().path();
            if (from == session && signal.arguments().value(1).toString() == ownShortcut)
                observer.pressed();
        });
    changed = portal.subscribe(
        portalPath, shortcutsInterface, u"ShortcutsChanged"_s, [this](const auto& signal) {
            const auto of = signal.arguments().value(0).template value<QDBusObjectPath>().path();
            if (of == session && !isAmong(signal.arguments().value(1)))
                report({.obstacle = std::string(refused)});
        });
    ask(u"CreateSession"_s, {}, {{u"session_handle_token"_s, u"tidemark"_s}},
        [this](const QVariantMap& results) {
            session = sessionIn(results);
            if (session.isEmpty())
                report({.obstacle = std::string(refused)});
            else
                list();
        });
}

/// What was bound earlier is kept: some desktops open a dialog whenever a program binds.
void PortalShortcut::list() {
    ask(u"ListShortcuts"_s, {QVariant::fromValue(QDBusObjectPath(session))}, {},
        [this](const QVariantMap& results) {
            if (!isAmong(results.value(u"shortcuts"_s)))
                bind();
        });
}

void PortalShortcut::bind() {
    const QList<BoundShortcut> wanted{{ownShortcut,
                                       {{u"description"_s, u"Search History"_s},
                                        {u"preferred_trigger"_s, u"CTRL+SHIFT+space"_s}}}};
    const QString noWindow;
    ask(u"BindShortcuts"_s,
        {QVariant::fromValue(QDBusObjectPath(session)), QVariant::fromValue(wanted), noWindow}, {},
        [this](const QVariantMap& results) {
            if (!isAmong(results.value(u"shortcuts"_s)))
                report({.obstacle = std::string(refused)});
        });
}

bool PortalShortcut::isAmong(const QVariant& shortcuts) {
    const auto bound = qdbus_cast<QList<BoundShortcut>>(shortcuts);
    const auto own = std::ranges::find(bound, ownShortcut, &BoundShortcut::id);
    if (own == bound.end())
        return false;
    const QString keys = own->properties.value(u"trigger_description"_s).toString();
    report({.isAvailable = true, .keys = keys.toStdString()});
    return true;
}

void PortalShortcut::ask(const QString& method, const QVariantList& arguments, QVariantMap options,
                         Use use) {
    const QString token = u"tidemark%1"_s.arg(++requests);
    options[u"handle_token"_s] = token;
    // The path of the request ends in the token. Subscribed before the call, so that no answer is
    // missed.
    response = portal.subscribe(
        anyRequest, request, u"Response"_s, [token, use](const QDBusMessage& signal) {
            if (!signal.path().endsWith('/' + token))
                return;
            const bool isGranted = signal.arguments().value(0).toUInt() == 0;
            use(isGranted ? qdbus_cast<QVariantMap>(signal.arguments().value(1)) : QVariantMap());
        });
    portal.call(portalPath, shortcutsInterface, method, arguments + QVariantList{options},
                [use = std::move(use), number = requests, this](const QDBusMessage& reply) {
                    if (reply.type() != QDBusMessage::ReplyMessage && number == requests)
                        use({});
                });
}

void PortalShortcut::report(const Availability& availability) {
    if (std::exchange(last, availability) != availability)
        observer.availabilityChanged(availability);
}

} // namespace tidemark
