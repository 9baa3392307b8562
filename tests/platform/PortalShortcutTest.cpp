#include "platform/linux/PortalShortcut.h"

#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString portalName = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString shortcuts = u"org.freedesktop.portal.GlobalShortcuts"_s;
const QString sessionPath = u"/org/freedesktop/portal/desktop/session/1"_s;

struct Keys {
    QString id;
    QVariantMap options;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Keys& keys) {
    argument.beginStructure();
    argument << keys.id << keys.options;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Keys& keys) {
    argument.beginStructure();
    argument >> keys.id >> keys.options;
    argument.endStructure();
    return argument;
}

/// A portal in this process: there is no service with this interface that runs without a desktop.
class Portal final : public QDBusVirtualObject {
public:
    explicit Portal(QDBusConnection connection) : bus(std::move(connection)) {
        qDBusRegisterMetaType<Keys>();
        qDBusRegisterMetaType<QList<Keys>>();
        bus.registerVirtualObject(portalPath, this, QDBusConnection::SubPath);
    }

    void start() { ASSERT_TRUE(bus.registerService(portalName)); }
    void stop() { bus.unregisterService(portalName); }
    void press(const QString& session, const QString& id) {
        auto signal = QDBusMessage::createSignal(portalPath, shortcuts, u"Activated"_s);
        signal << QVariant::fromValue(QDBusObjectPath(session)) << id << quint64{1}
               << QVariantMap();
        bus.send(signal);
    }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        log += call.member() + u' ';
        if (call.member() == u"Register"_s)
            return connection.send(
                call.createErrorReply(QDBusError::UnknownInterface, u"an earlier release"_s));
        const auto options = qdbus_cast<QVariantMap>(call.arguments().constLast());
        const QString request = portalPath + u"/request/"_s
                                + call.service().mid(1).replace(u'.', u'_') + u'/'
                                + options.value(u"handle_token"_s).toString();
        connection.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        if (call.member() == u"BindShortcuts"_s && !refuses)
            confirmed = qdbus_cast<QList<Keys>>(call.arguments().at(1));
        auto response =
            QDBusMessage::createSignal(request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        const bool isRefused = refuses && call.member() == u"BindShortcuts"_s;
        response << quint32(isRefused ? 1 : 0)
                 << QVariantMap{{u"session_handle"_s, sessionPath},
                                {u"shortcuts"_s, QVariant::fromValue(confirmed)}};
        return connection.send(response);
    }
    QString introspect(const QString&) const override { return {}; }

    QString log;
    bool refuses = false;
    QList<Keys> confirmed;

private:
    QDBusConnection bus;
};

struct PortalShortcutTest : testing::Test {
    void open() {
        shortcut = std::make_unique<PortalShortcut>(
            home.connect(u"program"_s),
            GlobalShortcut::Observer{
                .pressed = [this] { ++presses; },
                .availabilityChanged = [this](bool now) { isAvailable = now; }});
    }

    test::PrivateBus home;
    Portal portal{home.connect(u"portal"_s)};
    int presses = 0;
    std::optional<bool> isAvailable;
    std::unique_ptr<PortalShortcut> shortcut;
};

} // namespace

TEST_F(PortalShortcutTest, AsksTheUserOnceAndReportsPresses) {
    open();
    test::until([&] { return isAvailable == false; });
    portal.start();
    test::until([&] { return isAvailable == true; });
    EXPECT_EQ(portal.log, u"Register CreateSession ListShortcuts BindShortcuts "_s);
    EXPECT_EQ(portal.confirmed.at(0).options.value(u"preferred_trigger"_s).toString(),
              u"CTRL+SHIFT+space"_s);
    portal.press(u"/another/session"_s, u"search"_s);
    portal.press(sessionPath, u"other"_s);
    portal.press(sessionPath, u"search"_s);
    test::until([&] { return presses > 0; });
    EXPECT_EQ(presses, 1);

    portal.stop();
    test::until([&] { return isAvailable == false; });
    portal.log.clear();
    portal.start();
    test::until([&] { return isAvailable == true; });
    EXPECT_EQ(portal.log, u"Register CreateSession ListShortcuts "_s) << "confirmed before";
}

TEST_F(PortalShortcutTest, StaysUnavailableWhenTheUserRefuses) {
    portal.refuses = true;
    portal.start();
    open();
    test::until([&] { return portal.log.contains(u"BindShortcuts"_s); });
    test::settle();
    EXPECT_EQ(isAvailable, false);
    portal.press(sessionPath, u"search"_s);
    test::settle();
    EXPECT_EQ(presses, 0);
}
