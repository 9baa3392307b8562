#include "core/activity/SystemActivityStore.h"
#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/Contains.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QProcessEnvironment>
#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.login1"_s;
const QString sleepManager = u"org.freedesktop.login1.Manager"_s;
const QString sleepManagerPath = u"/org/freedesktop/login1"_s;

/// The recording program, with a mock of logind.
struct ActivityRecording : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"machine"_s);
    test::MockService logind{home, bus, u"logind"_s, service};
    test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "data/Tidemark/system-activity.json";
    QProcess recorder;
    QTimer machine;
    bool asleep = false;

    ~ActivityRecording() override {
        recorder.kill();
        recorder.waitForFinished();
    }

    void start() { start(home.address()); }
    void start(const QString& systemBus) {
        const QString root = QString::fromStdString(folder.path().native());
        std::filesystem::permissions(folder.makeFolder("run"), std::filesystem::perms::owner_all);
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto* folderOf : {"DATA", "CONFIG"})
            environment.insert(u"XDG_%1_HOME"_s.arg(QLatin1String(folderOf)),
                               root + '/' + QString::fromLatin1(folderOf).toLower());
        environment.insert(u"XDG_RUNTIME_DIR"_s, root + u"/run"_s);
        environment.insert(u"HOME"_s, root);
        environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, systemBus);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, systemBus);
        recorder.setProcessEnvironment(environment);
        recorder.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        recorder.start(QStringLiteral(TIDEMARK_PROGRAM), {u"run"_s, u"--setup"_s, u"none"_s});
    }
    void prepareForSleep(bool preparing) {
        logind.control(
            sleepManagerPath, u"EmitSignal"_s,
            {sleepManager, u"PrepareForSleep"_s, u"b"_s, QVariant(QVariantList{preparing})});
    }
    /// Lets the machine sleep and wake again and again, because the test can't observe when the
    /// recorder begins to follow logind.
    void keepSleeping() {
        machine.callOnTimeout([this] { prepareForSleep(asleep = !asleep); });
        machine.start(50);
    }
    /// Ends the recorder by SIGTERM and expects a clean end.
    void expectToEnd() {
        recorder.terminate();
        test::until([&] { return recorder.state() == QProcess::NotRunning; });
        EXPECT_EQ(recorder.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(recorder.exitCode(), 0);
    }
    std::vector<Shared<SystemActivity>> stored() const { return SystemActivityStore::read(file); }
};

} // namespace

TEST_F(ActivityRecording, WritesASleepToTheFile) {
    logind.start();
    start();
    keepSleeping();
    const auto sleeps = [&] {
        const auto records = stored();
        return std::ranges::count_if(
            records, [](const auto& record) { return record->observedSession.has_value(); });
    };
    test::until([&] { return sleeps() >= 2; });
    expectToEnd();

    std::string kinds;
    for (const auto& record : stored())
        kinds += std::string(rawValue(record->kind)) + " ";
    EXPECT_TRUE(test::contains(kinds, "sleepRequested woke sleepRequested woke "));
    EXPECT_EQ(test::modeOf(file), 0600U);
    EXPECT_FALSE(test::contains(test::namesIn(file.parent_path()), ".new-"));
}

TEST_F(ActivityRecording, WritesNothingToADataFolderThatWasReplaced) {
    logind.start();
    start();
    keepSleeping();
    test::until([&] { return !stored().empty(); });
    const auto data = file.parent_path();
    std::filesystem::rename(data, folder / "moved");
    std::filesystem::create_directory(data);
    test::until([&] {
        QProcess status;
        status.setProcessEnvironment(recorder.processEnvironment());
        status.start(QStringLiteral(TIDEMARK_PROGRAM), {u"status"_s});
        return status.waitForFinished()
               && status.readAllStandardOutput().contains("Activity history could not be saved.");
    });
    machine.stop();
    expectToEnd();
    EXPECT_EQ(test::namesIn(data), "");
}

TEST_F(ActivityRecording, IsNotDelayedByABusThatHangs) {
    // The bus of the first round never replies; that of the second hangs after one reply.
    for (const int replies : {0, 1}) {
        QLocalServer bus;
        ASSERT_TRUE(bus.listen(QString::fromStdString((folder / "stuck").native())));
        int connections = 0;
        QObject::connect(&bus, &QLocalServer::newConnection, [&] {
            QLocalSocket* client = bus.nextPendingConnection();
            if (++connections <= replies)
                client->write("OK 1234\r\nreply");
        });
        start(u"unix:path="_s + bus.fullServerName());
        QTimer look;
        look.start(5);
        test::until([&] {
            return connections > replies
                   && std::filesystem::exists(file.parent_path() / "journal.json");
        });
        expectToEnd();
        std::filesystem::remove_all(folder / "data");
    }
}
