#include "platform/linux/LogindMonitor.h"

#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <csignal>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString manager = u"org.freedesktop.login1.Manager"_s;
const QString managerPath = u"/org/freedesktop/login1"_s;
const QString sessionPath = u"/org/freedesktop/login1/session/c1"_s;

QVariant session() {
    return QVariant::fromValue(QDBusObjectPath(sessionPath));
}

struct LogindMonitorTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    test::MockService logind{home, bus, u"logind"_s, u"org.freedesktop.login1"_s};
    NotificationCenter center;
    std::string posted;
    std::vector<NotificationCenter::Token> tokens;
    test::ManualAppClock clock;
    /// Seconds until the observers are ready for a sleep.
    double settling = 1;
    std::unique_ptr<LogindMonitor> monitor;

    void SetUp() override {
        for (const auto notification :
             {notification::willSleep, notification::didWake, notification::sleepAbandoned,
              notification::willPowerOff, notification::sessionDidBecomeActive,
              notification::sessionDidResignActive})
            tokens.push_back(center.observe(notification, [this, notification] {
                posted += std::string(notification.name) + " ";
            }));
    }

    ~LogindMonitorTest() override { clock.advance(1000); }

    QCoro::Task<void> settle() { co_await clock.sleep(settling, {}, AppClock::Slack::none); }
    void createMonitor() {
        monitor = std::make_unique<LogindMonitor>(bus, center, [this] { return settle(); }, clock);
    }
    void startMonitor() {
        createMonitor();
        test::until([&] { return monitor->isFollowing(); });
    }
    void expectPosted(const std::string& expected) {
        test::until([&] { return posted.size() >= expected.size(); });
        EXPECT_EQ(posted, expected);
        posted.clear();
    }

    void emitSignal(const QString& name, const QString& signature, const QVariantList& arguments) {
        logind.control(managerPath, u"EmitSignal"_s,
                       {manager, name, signature, QVariant(arguments)});
    }
    void prepareForSleep(bool preparing) { emitSignal(u"PrepareForSleep"_s, u"b"_s, {preparing}); }
    void untilDelaying(bool delaying) {
        test::until([&] { return monitor->isDelayingSleep() == delaying; });
    }
    QString locks() const {
        const auto reply = bus.call(QDBusMessage::createMethodCall(
            u"org.freedesktop.login1"_s, managerPath, manager, u"ListInhibitors"_s));
        const auto list = reply.arguments().value(0).value<QDBusArgument>();
        QString text;
        for (list.beginArray(); !list.atEnd();) {
            QString what;
            QString who;
            QString why;
            QString mode;
            quint32 user = 0;
            quint32 process = 0;
            list.beginStructure();
            list >> what >> who >> why >> mode >> user >> process;
            list.endStructure();
            text += what + ' ' + who + ' ' + mode + ' ';
        }
        list.endArray();
        return text;
    }
    /// Asks again and again, because the mock notices the release of a lock with a delay.
    void untilLocksAre(const char* expected) {
        QTimer look;
        look.start(5);
        test::until([&] { return locks() == QLatin1String(expected); });
    }
    void addSession(bool active) {
        logind.control(managerPath, u"AddSession"_s,
                       {u"c1"_s, u"seat0"_s, QVariant::fromValue(static_cast<quint32>(::getuid())),
                        u"me"_s, active});
    }
    void setActive(bool active) {
        logind.control(sessionPath, u"UpdateProperties"_s,
                       {u"org.freedesktop.login1.Session"_s, QVariantMap{{u"Active"_s, active}}});
    }
    void answer(const QString& method, const QString& path) {
        logind.control(managerPath, u"AddMethod"_s,
                       {manager, method, u"u"_s, u"o"_s, u"ret = '%1'"_s.arg(path)});
    }
    /// The template lacks this method; without it, a process belongs to no session.
    void answerSessionOfProcess() { answer(u"GetSessionByPID"_s, sessionPath); }
    void makeSessionTheDisplay() {
        const QString user = u"/org/freedesktop/login1/user/%1"_s.arg(::getuid());
        // The method of the template only accepts texts.
        answer(u"GetUser"_s, user);
        const QString change =
            u"objects['%1'].Set('org.freedesktop.login1.User', 'Display', "
            u"('c1', dbus.ObjectPath('%2'))); ret = '/'"_s.arg(user, sessionPath);
        const QString name = u"MakeDisplay"_s;
        logind.control(managerPath, u"AddMethod"_s, {manager, name, QString(), u"o"_s, change});
        const auto reply = bus.call(QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s,
                                                                   managerPath, manager, name));
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
    }
    void untilSessionIs(bool active) {
        test::until([&] { return monitor->sessionActive() == active; });
    }
};

} // namespace

TEST_F(LogindMonitorTest, PostsSleepWakeAndPowerOffOnce) {
    logind.start();
    startMonitor();
    prepareForSleep(true);
    prepareForSleep(true);
    prepareForSleep(false);
    emitSignal(u"PrepareForShutdown"_s, u"b"_s, {false});
    emitSignal(u"PrepareForShutdown"_s, u"b"_s, {true});
    expectPosted("willSleep didWake willPowerOff ");
}

TEST_F(LogindMonitorTest, DelaysEachSleepUntilTheObserversAreReady) {
    logind.start();
    startMonitor();
    for (const auto& [needed, delay] :
         {std::pair{1.0, 1.0}, std::pair{60.0, LogindMonitor::mostDelay}}) {
        settling = needed;
        untilDelaying(true);
        untilLocksAre("sleep Tidemark delay ");
        prepareForSleep(true);
        expectPosted("willSleep ");
        clock.advance(delay - 0.5);
        EXPECT_TRUE(monitor->isDelayingSleep());
        clock.advance(0.5);
        EXPECT_FALSE(monitor->isDelayingSleep());
        untilLocksAre("");
        prepareForSleep(false);
        expectPosted("didWake ");
    }
    // Observers that finish late must not affect the next sleep.
    untilDelaying(true);
    clock.advance(60);
    EXPECT_TRUE(monitor->isDelayingSleep());
    monitor.reset();
    untilLocksAre("");
}

TEST_F(LogindMonitorTest, WorksWithoutADelayLock) {
    logind.start();
    logind.control(managerPath, u"AddMethod"_s,
                   {manager, u"Inhibit"_s, u"ssss"_s, u"h"_s, u"raise ValueError('refused')"_s});
    startMonitor();
    prepareForSleep(true);
    expectPosted("willSleep ");
    // The reply to `Inhibit` arrived before the signal.
    EXPECT_FALSE(monitor->isDelayingSleep());
    prepareForSleep(false);
    expectPosted("didWake ");
}

TEST_F(LogindMonitorTest, FollowsTheSessionOfTheProcess) {
    logind.start();
    addSession(true);
    answerSessionOfProcess();
    startMonitor();
    untilSessionIs(true);
    for (const bool active : {true, false, false, true})
        setActive(active);
    expectPosted("sessionDidResignActive sessionDidBecomeActive ");
}

TEST_F(LogindMonitorTest, FollowsTheDisplaySessionForAUserService) {
    logind.start();
    startMonitor();
    addSession(false);
    makeSessionTheDisplay();
    emitSignal(u"SessionNew"_s, u"so"_s, {u"c1"_s, session()});
    untilSessionIs(false);
    setActive(true);
    expectPosted("sessionDidBecomeActive ");

    // At the next login, the user's display is still the removed session for a moment.
    logind.control(managerPath, u"RemoveObject"_s, {sessionPath});
    emitSignal(u"SessionRemoved"_s, u"so"_s, {u"c1"_s, session()});
    test::until([&] { return !monitor->isFollowingSession(); });
    addSession(false);
    emitSignal(u"SessionNew"_s, u"so"_s, {u"c1"_s, session()});
    expectPosted("sessionDidResignActive ");
}

TEST_F(LogindMonitorTest, FollowsARestartedService) {
    createMonitor();
    for (const bool active : {true, false}) {
        logind.start();
        addSession(active);
        answerSessionOfProcess();
        test::until([&] { return monitor->isFollowing(); });
        // The monitor may have looked for the session before it was added to the mock; the real
        // logind knows all sessions when it starts.
        emitSignal(u"SessionNew"_s, u"so"_s, {u"c1"_s, session()});
        untilSessionIs(active);
        if (!active)
            expectPosted("sessionDidResignActive ");
        prepareForSleep(true);
        expectPosted("willSleep ");
        logind.stop();
        // No `didWake`, since none was reported.
        expectPosted("sleepAbandoned ");
        EXPECT_FALSE(monitor->isFollowing());
        EXPECT_FALSE(monitor->isDelayingSleep());
    }
}

TEST_F(LogindMonitorTest, DoesNotBlockOnTheBus) {
    const pid_t daemon = static_cast<pid_t>(home.daemon().processId());
    logind.start();
    // If the monitor waited for the bus, it would wait for ever; the alarm ends the test then.
    ::alarm(60);
    ::kill(daemon, SIGSTOP);
    createMonitor();
    test::settle();
    monitor.reset();
    createMonitor();
    ::kill(daemon, SIGCONT);
    ::alarm(0);
    test::until([&] { return monitor->isFollowing(); });
    prepareForSleep(true);
    expectPosted("willSleep ");
}

TEST_F(LogindMonitorTest, WorksWithoutABus) {
    monitor = std::make_unique<LogindMonitor>(
        QDBusConnection(u"none"_s), center, [this] { return settle(); }, clock);
    test::settle();
    EXPECT_FALSE(monitor->isFollowing());
}
