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

namespace {

const QString manager = QStringLiteral("org.freedesktop.login1.Manager");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString sessionPath = QStringLiteral("/org/freedesktop/login1/session/c1");

QVariant session() {
    return QVariant::fromValue(QDBusObjectPath(sessionPath));
}

struct LogindMonitorTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(QStringLiteral("tested"));
    test::MockService logind{home, bus, QStringLiteral("logind"),
                             QStringLiteral("org.freedesktop.login1")};
    NotificationCenter center;
    std::string posted;
    std::vector<NotificationCenter::Token> tokens;
    test::ManualAppClock clock;
    /// How long the observers take to be ready for a sleep.
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
        logind.control(managerPath, QStringLiteral("EmitSignal"),
                       {manager, name, signature, QVariant(arguments)});
    }
    void prepareForSleep(bool preparing) {
        emitSignal(QStringLiteral("PrepareForSleep"), QStringLiteral("b"), {preparing});
    }
    void untilDelaying(bool delaying) {
        test::until([&] { return monitor->isDelayingSleep() == delaying; });
    }
    QString locks() const {
        const auto reply = bus.call(
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.login1"), managerPath,
                                           manager, QStringLiteral("ListInhibitors")));
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
    /// The mock learns of an end of a lock when it gets round to it.
    void untilLocksAre(const char* expected) {
        QTimer look;
        look.start(5);
        test::until([&] { return locks() == QLatin1String(expected); });
    }
    void addSession(bool active) {
        logind.control(managerPath, QStringLiteral("AddSession"),
                       {QStringLiteral("c1"), QStringLiteral("seat0"),
                        QVariant::fromValue(static_cast<quint32>(::getuid())), QStringLiteral("me"),
                        active});
    }
    void setActive(bool active) {
        logind.control(sessionPath, QStringLiteral("UpdateProperties"),
                       {QStringLiteral("org.freedesktop.login1.Session"),
                        QVariantMap{{QStringLiteral("Active"), active}}});
    }
    void answer(const QString& method, const QString& path) {
        logind.control(managerPath, QStringLiteral("AddMethod"),
                       {manager, method, QStringLiteral("u"), QStringLiteral("o"),
                        QStringLiteral("ret = '%1'").arg(path)});
    }
    /// The template leaves this method out; without it, a process belongs to no session.
    void answerSessionOfProcess() { answer(QStringLiteral("GetSessionByPID"), sessionPath); }
    void makeSessionTheDisplay() {
        const QString user = QStringLiteral("/org/freedesktop/login1/user/%1").arg(::getuid());
        // The one of the template takes texts only.
        answer(QStringLiteral("GetUser"), user);
        const QString change =
            QStringLiteral("objects['%1'].Set('org.freedesktop.login1.User', 'Display', "
                           "('c1', dbus.ObjectPath('%2'))); ret = '/'")
                .arg(user, sessionPath);
        const QString name = QStringLiteral("MakeDisplay");
        logind.control(managerPath, QStringLiteral("AddMethod"),
                       {manager, name, QString(), QStringLiteral("o"), change});
        const auto reply = bus.call(QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.login1"), managerPath, manager, name));
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
    emitSignal(QStringLiteral("PrepareForShutdown"), QStringLiteral("b"), {false});
    emitSignal(QStringLiteral("PrepareForShutdown"), QStringLiteral("b"), {true});
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
    // What settles late belongs to a sleep that is over.
    untilDelaying(true);
    clock.advance(60);
    EXPECT_TRUE(monitor->isDelayingSleep());
    monitor.reset();
    untilLocksAre("");
}

TEST_F(LogindMonitorTest, FollowsTheMachineWithoutALock) {
    logind.start();
    logind.control(managerPath, QStringLiteral("AddMethod"),
                   {manager, QStringLiteral("Inhibit"), QStringLiteral("ssss"), QStringLiteral("h"),
                    QStringLiteral("raise ValueError('refused')")});
    startMonitor();
    prepareForSleep(true);
    expectPosted("willSleep ");
    // Its answer came before the signal.
    EXPECT_FALSE(monitor->isDelayingSleep());
    prepareForSleep(false);
    expectPosted("didWake ");
}

TEST_F(LogindMonitorTest, TakesNoSignalFromAnybodyElse) {
    logind.start();
    startMonitor();
    const auto stranger = home.connect(QStringLiteral("stranger"));
    auto forged =
        QDBusMessage::createSignal(managerPath, manager, QStringLiteral("PrepareForSleep"));
    forged << true;
    ASSERT_TRUE(stranger.send(forged));
    stranger.call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")));
    emitSignal(QStringLiteral("PrepareForShutdown"), QStringLiteral("b"), {true});
    expectPosted("willPowerOff ");
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

TEST_F(LogindMonitorTest, FollowsTheDisplaySessionOfAServiceOfTheUserOnceThereIsOne) {
    logind.start();
    startMonitor();
    addSession(false);
    makeSessionTheDisplay();
    emitSignal(QStringLiteral("SessionNew"), QStringLiteral("so"),
               {QStringLiteral("c1"), session()});
    untilSessionIs(false);
    setActive(true);
    expectPosted("sessionDidBecomeActive ");

    // The next login, after the display was for a moment the session that is no more.
    logind.control(managerPath, QStringLiteral("RemoveObject"), {sessionPath});
    emitSignal(QStringLiteral("SessionRemoved"), QStringLiteral("so"),
               {QStringLiteral("c1"), session()});
    test::until([&] { return !monitor->isFollowingSession(); });
    addSession(false);
    emitSignal(QStringLiteral("SessionNew"), QStringLiteral("so"),
               {QStringLiteral("c1"), session()});
    expectPosted("sessionDidResignActive ");
}

TEST_F(LogindMonitorTest, OutlivesTheServiceAndFollowsTheNextOne) {
    createMonitor();
    for (const bool active : {true, false}) {
        logind.start();
        addSession(active);
        answerSessionOfProcess();
        test::until([&] { return monitor->isFollowing(); });
        // The search may have come before the session; a logind that starts has read them all.
        emitSignal(QStringLiteral("SessionNew"), QStringLiteral("so"),
                   {QStringLiteral("c1"), session()});
        untilSessionIs(active);
        if (!active)
            expectPosted("sessionDidResignActive ");
        prepareForSleep(true);
        expectPosted("willSleep ");
        logind.stop();
        // No wake: nobody has reported one.
        expectPosted("sleepAbandoned ");
        EXPECT_FALSE(monitor->isFollowing());
        EXPECT_FALSE(monitor->isDelayingSleep());
    }
}

TEST_F(LogindMonitorTest, NeverWaitsForTheBus) {
    const pid_t daemon = static_cast<pid_t>(home.daemon().processId());
    logind.start();
    // A wait for the bus would be one for ever: the alarm ends the test then.
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

TEST_F(LogindMonitorTest, NoBusIsANormalState) {
    monitor = std::make_unique<LogindMonitor>(
        QDBusConnection(QStringLiteral("none")), center, [this] { return settle(); }, clock);
    test::settle();
    EXPECT_FALSE(monitor->isFollowing());
}
