#include "core/activity/SystemActivityStore.h"
#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"

#include <QLocalServer>
#include <QProcessEnvironment>
#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString manager = QStringLiteral("org.freedesktop.login1.Manager");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");

/// The program as it records, on a machine whose logind is a mock.
struct ActivityRecording : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(QStringLiteral("machine"));
    test::MockService logind{home, bus, QStringLiteral("logind"), service};
    test::TemporaryFolder folder;
    const std::filesystem::path file = folder / "data/Tidemark/system-activity.json";
    QProcess recorder;

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
            environment.insert(QStringLiteral("XDG_%1_HOME").arg(QLatin1String(folderOf)),
                               root + '/' + QString::fromLatin1(folderOf).toLower());
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), root + QStringLiteral("/run"));
        environment.insert(QStringLiteral("HOME"), root);
        environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), systemBus);
        recorder.setProcessEnvironment(environment);
        recorder.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        recorder.start(QStringLiteral(TIDEMARK_PROGRAM),
                       {QStringLiteral("run"), QStringLiteral("--setup"), QStringLiteral("none")});
    }
    void prepareForSleep(bool preparing) {
        logind.control(managerPath, QStringLiteral("EmitSignal"),
                       {manager, QStringLiteral("PrepareForSleep"), QStringLiteral("b"),
                        QVariant(QVariantList{preparing})});
    }
    /// The recorder does what it is asked for, and ends when it shall.
    void expectToEnd() {
        recorder.terminate();
        test::until([&] { return recorder.state() == QProcess::NotRunning; });
        EXPECT_EQ(recorder.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(recorder.exitCode(), 0);
    }
    std::vector<SystemActivity> stored() const { return SystemActivityStore::read(file); }
};

} // namespace

TEST_F(ActivityRecording, ASleepOfTheMachineIsInTheFile) {
    logind.start();
    start();
    // It follows the machine from some moment on, which nothing tells.
    QTimer machine;
    bool asleep = false;
    machine.callOnTimeout([&] { prepareForSleep(asleep = !asleep); });
    machine.start(50);
    const auto sleeps = [&] {
        const auto records = stored();
        return std::ranges::count_if(
            records, [](const auto& record) { return record.observedSession.has_value(); });
    };
    test::until([&] { return sleeps() >= 2; });
    expectToEnd();

    std::string kinds;
    for (const auto& record : stored())
        kinds += std::string(rawValue(record.kind)) + " ";
    EXPECT_NE(kinds.find("sleepRequested woke sleepRequested woke "), std::string::npos) << kinds;
    EXPECT_EQ(test::modeOf(file), 0600U);
    EXPECT_EQ(test::namesIn(file.parent_path()).find(".new-"), std::string::npos);
}

TEST_F(ActivityRecording, IsNotHeldUpByABusThatAcceptsAndNeverAnswers) {
    QLocalServer stuck;
    ASSERT_TRUE(stuck.listen(QString::fromStdString((folder / "stuck").native())));
    start(QStringLiteral("unix:path=") + stuck.fullServerName());
    QTimer look;
    look.start(5);
    test::until([&] {
        return stuck.hasPendingConnections()
               && std::filesystem::exists(file.parent_path() / "journal.json");
    });
    expectToEnd();
}
