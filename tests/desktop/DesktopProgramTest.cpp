#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"
#include "tests/platform/NotifierWatcher.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>
#include <csignal>
#include <optional>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

/// Runs the programs with data and settings of their own, on a display, with a window manager and
/// a session bus of their own.
struct Desktop : testing::Test {
    void SetUp() override {
        if (!test::hasPrograms({"Xvfb", "openbox", "xdotool"}))
            GTEST_SKIP() << "Xvfb, openbox and xdotool are needed";
        display.emplace();
        std::filesystem::permissions(folder.makeFolder("run"), std::filesystem::perms::owner_all);
    }
    void TearDown() override {
        for (auto& process : running) {
            process->kill();
            process->waitForFinished();
        }
    }

    QProcessEnvironment environment() const {
        const QString root = QString::fromStdString(folder.path().native());
        auto variables = QProcessEnvironment::systemEnvironment();
        variables.insert(u"HOME"_s, root);
        variables.insert(u"XDG_DATA_HOME"_s, root + u"/data"_s);
        variables.insert(u"XDG_CONFIG_HOME"_s, root + u"/config"_s);
        variables.insert(u"XDG_RUNTIME_DIR"_s, root + u"/run"_s);
        variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        variables.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, bus.address());
        variables.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        variables.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        variables.remove(u"WAYLAND_DISPLAY"_s);
        if (display)
            variables.insert(u"DISPLAY"_s, QString::fromStdString(display->display()));
        return variables;
    }
    QProcess& start(const char* program, const QStringList& arguments = {}) {
        running.push_back(std::make_unique<QProcess>());
        QProcess& process = *running.back();
        process.setProcessEnvironment(environment());
        process.start(QString::fromUtf8(program), arguments);
        process.waitForStarted();
        return process;
    }
    /// Starts the program with windows and waits for its window.
    QProcess& startWindows() {
        QProcess& process = start(TIDEMARK_DESKTOP);
        EXPECT_FALSE(visible(u"^Tidemark$"_s).isEmpty());
        return process;
    }
    /// Waits for the end of a program and returns its exit status.
    static int end(QProcess& process) {
        test::until([&] { return process.state() == QProcess::NotRunning; });
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    int command(const QStringList& arguments) { return end(start(TIDEMARK_PROGRAM, arguments)); }
    /// Asks again and again: nothing reports what happens on a display.
    template <class Condition>
    static void eventually(const Condition& condition) {
        QTimer asking;
        asking.start(20);
        test::until(condition);
    }
    QString xdotool(const QStringList& arguments) const {
        return QString::fromUtf8(display->run(QStringList(u"xdotool"_s) + arguments).trimmed());
    }
    /// Waits for a visible window with this title and returns its id.
    QString visible(const QString& title) const {
        return xdotool({u"search"_s, u"--sync"_s, u"--onlyvisible"_s, u"--name"_s, title});
    }
    QString activeTitle() const { return xdotool({u"getactivewindow"_s, u"getwindowname"_s}); }

    const test::TemporaryFolder folder;
    const test::PrivateBus bus;
    std::optional<test::X11Server> display;
    std::vector<std::unique_ptr<QProcess>> running;
};

} // namespace

TEST_F(Desktop, BringsItsWindowForwardWhenItIsStartedAgain) {
    QProcess& first = startWindows();
    xdotool({u"windowminimize"_s, u"--sync"_s, visible(u"^Tidemark$"_s)});
    EXPECT_EQ(end(start(TIDEMARK_DESKTOP)), 0);
    EXPECT_FALSE(visible(u"^Tidemark$"_s).isEmpty());
    ::kill(static_cast<pid_t>(first.processId()), SIGTERM);
    EXPECT_EQ(end(first), 0);
}

TEST_F(Desktop, OpensTheSearchPanelByItsKeysFromAnyProgram) {
    startWindows();
    // Until the keys are grabbed.
    eventually([&] {
        xdotool({u"key"_s, u"ctrl+shift+space"_s});
        return !xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"Search Tidemark"_s})
                    .isEmpty();
    });
    eventually([&] { return activeTitle().contains(u"Search Tidemark"_s); });
    xdotool({u"key"_s, u"Escape"_s});
    eventually([&] { return !activeTitle().contains(u"Search Tidemark"_s); });
    EXPECT_EQ(command({u"search"_s, u"--panel"_s}), 0);
    EXPECT_FALSE(visible(u"Search Tidemark"_s).isEmpty());
}

TEST_F(Desktop, TakesTheHistoryOverFromARecorderWithoutWindow) {
    QProcess& recorder = start(TIDEMARK_PROGRAM, {u"run"_s, u"--setup"_s, u"none"_s});
    QByteArray log;
    test::until([&] {
        log += recorder.readAllStandardError();
        return log.contains("Starting observation service");
    });
    EXPECT_EQ(command({u"window"_s}), 1);
    startWindows();
    EXPECT_EQ(end(recorder), 0);
    EXPECT_EQ(command({u"window"_s}), 0);
    EXPECT_EQ(command({u"hand-over"_s}), 1);
}

TEST_F(Desktop, ShowsItsIconToAHostThatComesLateAndToItsSuccessor) {
    QProcess& program = startWindows();
    test::NotifierWatcher panel(bus.connect(u"panel"_s));
    for (int round = 0; round < 2; ++round) {
        panel.setHost(true);
        panel.start();
        test::until([&] { return !panel.registered().isEmpty(); });
        // With the icon there, the program goes on without a window.
        xdotool(
            {u"windowactivate"_s, u"--sync"_s, visible(u"^Tidemark$"_s), u"key"_s, u"alt+F4"_s});
        eventually([&] {
            return xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Tidemark$"_s})
                .isEmpty();
        });
        panel.stop();
        // And without it, nobody is left without one.
        EXPECT_FALSE(visible(u"^Tidemark$"_s).isEmpty());
        EXPECT_EQ(program.state(), QProcess::Running);
    }
}

TEST_F(Desktop, EndsWithOneSentenceWithoutADisplay) {
    for (const auto& name : {u""_s, u":9876"_s}) {
        QProcess process;
        auto variables = environment();
        variables.insert(u"DISPLAY"_s, name);
        process.setProcessEnvironment(variables);
        process.start(QString::fromUtf8(TIDEMARK_DESKTOP), {});
        process.waitForFinished(60'000);
        EXPECT_EQ(process.exitCode(), 1);
        EXPECT_EQ(process.readAllStandardError(),
                  "tidemark-desktop: There is no display to open a window on; tidemark run records "
                  "without one.\n");
    }
}

TEST_F(Desktop, LeavesTheHistoryWholeWhenTheDisplayIsLost) {
    const auto stuff = QString::fromStdString(folder.makeFolder("Stuff").native());
    ASSERT_EQ(command({u"folders"_s, u"add"_s, stuff}), 0);
    QProcess& program = startWindows();
    eventually([&] { return command({u"capture"_s}) == 0; });
    display->stop();
    EXPECT_NE(end(program), -1);
    EXPECT_EQ(command({u"timeline"_s}), 0);
    EXPECT_EQ(command({u"capture"_s}), 0);
}
