#include "platform/linux/ScreenSleepMonitor.h"

#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString saverName = u"org.gnome.ScreenSaver"_s;
const QString saverPath = u"/org/gnome/ScreenSaver"_s;
const QString mutter = u"org.gnome.Mutter.DisplayConfig"_s;
const QString mutterPath = u"/org/gnome/Mutter/DisplayConfig"_s;
const QString logindPath = u"/org/freedesktop/login1"_s;
const QString screenSessionPath = u"/org/freedesktop/login1/session/c1"_s;

struct ScreenSleepMonitorTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    NotificationCenter center;
    std::string posted;
    std::vector<NotificationCenter::Token> tokens;
    std::unique_ptr<ScreenSleepMonitor> monitor;

    void SetUp() override {
        for (const auto notification :
             {notification::screensDidSleep, notification::screensDidWake})
            tokens.push_back(center.observe(notification, [this, notification] {
                posted += std::string(notification.name) + " ";
            }));
        monitor = std::make_unique<ScreenSleepMonitor>(bus, bus, center);
    }
    void setActive(bool isActive) {
        auto call = QDBusMessage::createMethodCall(saverName, saverPath, saverName, u"SetActive"_s);
        call << isActive;
        ASSERT_EQ(bus.call(call).type(), QDBusMessage::ReplyMessage);
    }
    void expectPosted(const std::string& expected) {
        test::until([&] { return posted.size() >= expected.size(); });
        EXPECT_EQ(posted, expected);
        posted.clear();
    }
};

} // namespace

TEST_F(ScreenSleepMonitorTest, FollowsTheScreenSaver) {
    test::MockService saver{home, bus, u"gnome_screensaver"_s, saverName};
    for (int round = 0; round < 2; ++round) {
        saver.start();
        setActive(true);
        expectPosted("screensDidSleep ");
        setActive(false);
        expectPosted("screensDidWake ");
        setActive(true);
        expectPosted("screensDidSleep ");
        // When the screen saver has ended, no service reports any more that the screens sleep.
        saver.stop();
        expectPosted("screensDidWake ");
    }
}

TEST_F(ScreenSleepMonitorTest, CombinesWhatIsKnown) {
    test::MockService displays{home, bus, test::MockService::Bare{mutterPath}, mutter};
    displays.start();
    const auto turn = [&](int mode) {
        displays.control(mutterPath, u"UpdateProperties"_s,
                         {mutter, QVariantMap{{u"PowerSaveMode"_s, mode}}});
    };
    displays.control(mutterPath, u"AddProperty"_s,
                     {mutter, u"PowerSaveMode"_s, QVariant::fromValue(QDBusVariant(-1))});
    test::MockService logind{home, bus, u"logind"_s, u"org.freedesktop.login1"_s};
    logind.start();
    logind.control(logindPath, u"AddSession"_s,
                   {u"c1"_s, u"seat0"_s, QVariant::fromValue(static_cast<quint32>(::getuid())),
                    u"me"_s, true});
    logind.control(logindPath, u"AddMethod"_s,
                   {u"org.freedesktop.login1.Manager"_s, u"GetSessionByPID"_s, u"u"_s, u"o"_s,
                    u"ret = '%1'"_s.arg(screenSessionPath)});
    logind.control(
        logindPath, u"EmitSignal"_s,
        {u"org.freedesktop.login1.Manager"_s, u"SessionNew"_s, u"so"_s,
         QVariant(QVariantList{u"c1"_s, QVariant::fromValue(QDBusObjectPath(screenSessionPath))})});
    const auto lock = [&](bool isLocked) {
        logind.control(
            screenSessionPath, u"UpdateProperties"_s,
            {u"org.freedesktop.login1.Session"_s, QVariantMap{{u"LockedHint"_s, isLocked}}});
    };
    lock(true);
    expectPosted("screensDidSleep ");
    turn(3);
    lock(false);
    turn(0);
    expectPosted("screensDidWake ");
    turn(1);
    expectPosted("screensDidSleep ");
    turn(0);
    expectPosted("screensDidWake ");
    // The screens are on, but count as asleep while the session is locked.
    lock(true);
    expectPosted("screensDidSleep ");
    // Where there is a screen saver, the lock does not count.
    test::MockService saver{home, bus, u"gnome_screensaver"_s, saverName};
    saver.start();
    expectPosted("screensDidWake ");
}
