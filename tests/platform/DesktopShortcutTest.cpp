#include "platform/linux/DesktopShortcut.h"

#include "platform/linux/BoundShortcut.h"
#include "platform/linux/KeySequence.h"
#include "tests/app/support/Await.h"
#include "tests/platform/FaultyService.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString portalInterface = u"org.freedesktop.portal.GlobalShortcuts"_s;
const QString shortcutSessionPath = portalPath + u"/session/1/tidemark"_s;
const QString componentPath = u"/component/app_tidemark"_s;

QVariant handleValue(const QString& path) {
    return QVariant::fromValue(QDBusObjectPath(path));
}

/// The results of a request about shortcuts.
QVariantMap with(const QList<BoundShortcut>& shortcuts) {
    return {{u"shortcuts"_s, QVariant::fromValue(shortcuts)}};
}

const BoundShortcut own{u"search"_s, {{u"trigger_description"_s, u"Meta+S"_s}}};
const BoundShortcut other{u"search"_s, {{u"trigger_description"_s, u"Meta+F"_s}}};

struct DesktopShortcutTest : testing::Test {
    DesktopShortcutTest() {
        qDBusRegisterMetaType<BoundShortcut>();
        qDBusRegisterMetaType<QList<BoundShortcut>>();
        qDBusRegisterMetaType<KeySequence>();
        qDBusRegisterMetaType<QList<KeySequence>>();
        for (const auto* method :
             {"Register app.tidemark", "CreateSession", "ListShortcuts", "BindShortcuts "})
            portal.answers[QLatin1String(method)] = {handleValue(portalPath + u"/request/1/x"_s)};
        portal.answers[u"Get org.freedesktop.portal.GlobalShortcuts version"_s] = {
            QVariant::fromValue(QDBusVariant(1U))};
        results[u"CreateSession"_s] = {0, {{u"session_handle"_s, shortcutSessionPath}}};
        portal.afterReply = [this](const QDBusMessage& call) { respond(call); };
        accelerators.answers[u"doRegister"_s] = {};
        accelerators.answers[u"setInactive"_s] = {};
        accelerators.answers[u"getComponent app.tidemark"_s] = {handleValue(componentPath)};
    }
    /// Answers a request, as the portal does after it has asked the user.
    void respond(const QDBusMessage& call) {
        const auto result = results.find(call.member());
        if (result == results.end())
            return;
        asked += call.member().toStdString() + " ";
        const auto options = qdbus_cast<QVariantMap>(call.arguments().last());
        const QString token = options.value(u"handle_token"_s).toString();
        portal.send(QDBusMessage::createSignal(portalPath + u"/request/1/"_s + token,
                                               u"org.freedesktop.portal.Request"_s, u"Response"_s)
                    << result->second.first << result->second.second);
    }
    void assign(int key) {
        const QList<KeySequence> keys{{{key, 0, 0, 0}}};
        accelerators.answers[u"setShortcutKeys"_s] = {QVariant::fromValue(keys)};
    }
    void follow() {
        shortcut.emplace(home.connect(u"program"_s),
                         GlobalShortcut::Observer{
                             .pressed = [this] { ++presses; },
                             .availabilityChanged = [this](const auto& now) { last = now; }});
    }
    void expect(const GlobalShortcut::Availability& expected) {
        test::until([&] { return last == expected; });
    }
    void press(const QString& session, const QString& id) const {
        portal.send(QDBusMessage::createSignal(portalPath, portalInterface, u"Activated"_s)
                    << handleValue(session) << id << quint64{1} << QVariantMap());
    }

    /// Reports that the user chose other keys in the settings of the desktop.
    void change(const BoundShortcut& to) const {
        portal.send(QDBusMessage::createSignal(portalPath, portalInterface, u"ShortcutsChanged"_s)
                    << handleValue(shortcutSessionPath) << QVariant::fromValue(QList{to}));
    }

    test::PrivateBus home;
    test::FaultyService portal{home.connect(u"portal"_s), u"org.freedesktop.portal.Desktop"_s};
    test::FaultyService accelerators{home.connect(u"kde"_s), u"org.kde.kglobalaccel"_s};
    /// The portal's response to each method: 0 when the request is granted, and the results.
    std::map<QString, std::pair<quint32, QVariantMap>> results;
    std::string asked;
    std::optional<GlobalShortcut::Availability> last;
    int presses = 0;
    std::optional<DesktopShortcut> shortcut;
};

const GlobalShortcut::Availability notOffered{
    .obstacle = "This desktop has no keys that work in every program."};
const GlobalShortcut::Availability refused{.obstacle = "The desktop did not assign the keys."};
const GlobalShortcut::Availability chosen{.isAvailable = true, .keys = "Meta+S"};

} // namespace

TEST_F(DesktopShortcutTest, UsesThePortal) {
    struct Case {
        const char* what;
        std::pair<quint32, QVariantMap> listed;
        std::pair<quint32, QVariantMap> bound;
        GlobalShortcut::Availability expected;
        const char* asked;
    };
    const Case cases[] = {
        {"bound earlier", {0, with({own})}, {2, {}}, chosen, "CreateSession ListShortcuts "},
        {"bound now",
         {0, with({})},
         {0, with({own})},
         chosen,
         "CreateSession ListShortcuts BindShortcuts "},
        {"refused by the user",
         {0, with({})},
         {1, {}},
         refused,
         "CreateSession ListShortcuts BindShortcuts "},
        {"others alone",
         {0, with({{u"other"_s, {}}})},
         {0, with({{u"other"_s, {}}})},
         refused,
         "CreateSession ListShortcuts BindShortcuts "},
    };
    follow();
    expect(notOffered);
    for (const auto& [what, listed, bound, expected, questions] : cases) {
        asked.clear();
        results[u"ListShortcuts"_s] = listed;
        results[u"BindShortcuts"_s] = bound;
        portal.start();
        expect(expected);
        EXPECT_EQ(asked, questions) << what;
        presses = 0;
        press(shortcutSessionPath + u"x"_s, own.id);
        press(shortcutSessionPath, u"other"_s);
        press(shortcutSessionPath, own.id);
        test::until([&] { return presses > 0; });
        EXPECT_EQ(presses, 1) << what;
        change(other);
        expect({.isAvailable = true, .keys = "Meta+F"});
        portal.stop();
        expect(notOffered);
    }
}

TEST_F(DesktopShortcutTest, UsesKdeWhereThePortalHasNoShortcuts) {
    portal.answers.erase(u"Get org.freedesktop.portal.GlobalShortcuts version"_s);
    portal.start();
    assign(0);
    accelerators.start();
    follow();
    expect(refused);
    accelerators.stop();
    expect(notOffered);
    assign(0x06000020);
    accelerators.start();
    expect({.isAvailable = true});
    for (const auto* action : {"other", "search"})
        accelerators.send(QDBusMessage::createSignal(componentPath,
                                                     u"org.kde.kglobalaccel.Component"_s,
                                                     u"globalShortcutPressed"_s)
                          << u"app.tidemark"_s << QLatin1String(action) << qint64{1});
    test::until([&] { return presses > 0; });
    EXPECT_EQ(presses, 1);
    const std::pair<int, const char*> named[] = {
        {0x1400'0053, "Meta+Ctrl+S"}, {0x0a00'0020, "Alt+Shift+Space"}, {0x0100'003b, "F12"}};
    for (const auto& [key, name] : named) {
        const QList<KeySequence> keys{{{key, 0, 0, 0}}};
        accelerators.send(QDBusMessage::createSignal(u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s,
                                                     u"yourShortcutsChanged"_s)
                          << QStringList{u"app.tidemark"_s, u"search"_s}
                          << QVariant::fromValue(keys));
        expect({.isAvailable = true, .keys = name});
    }
    // A portal with shortcuts starts: the keys must be released at KDE, or they would count twice.
    portal.stop();
    portal.answers[u"Get org.freedesktop.portal.GlobalShortcuts version"_s] = {
        QVariant::fromValue(QDBusVariant(1U))};
    results[u"ListShortcuts"_s] = {0, with({own})};
    bool isReleased = false;
    accelerators.afterReply = [&](const QDBusMessage& call) {
        isReleased = isReleased || call.member() == u"setInactive"_s;
    };
    portal.start();
    expect(chosen);
    test::until([&] { return isReleased; });
}
