#pragma once

#include "tests/app/support/Await.h"
#include "tests/desktop/ProgramEnvironment.h"
#include "tests/platform/DisplayServers.h"
#include "tests/platform/PrivateBus.h"

#include <QProcess>
#include <QTimer>
#include <optional>

#include <gtest/gtest.h>

namespace tidemark::test {

using namespace Qt::StringLiterals;

/// Runs the programs with data and settings of their own, on a display, with a window manager and
/// a session bus of their own.
struct Desktop : testing::Test {
    void SetUp() override {
        if (!hasPrograms({"Xvfb", "openbox", "xdotool"}))
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
        auto variables = programEnvironment(folder, bus.address(), u"xcb"_s);
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
    /// Waits for the end of a program and returns its exit status, or -1 if a signal ended it.
    static int end(QProcess& process) {
        until([&] { return process.state() == QProcess::NotRunning; });
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    int command(const QStringList& arguments) { return end(start(TIDEMARK_PROGRAM, arguments)); }
    /// Waits until the condition holds. Checks it every 20 ms, because nothing reports what happens
    /// on a display.
    template <class Condition>
    static void eventually(const Condition& condition) {
        QTimer asking;
        asking.start(20);
        until(condition);
    }
    QString xdotool(const QStringList& arguments) const {
        return QString::fromUtf8(display->run(QStringList(u"xdotool"_s) + arguments).trimmed());
    }
    /// Waits for a visible window with this title and returns its id.
    QString visible(const QString& title) const {
        QString window;
        // xdotool also finds nothing when another window disappears during its search.
        eventually([&] {
            window = xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, title});
            return !window.isEmpty();
        });
        return window;
    }
    /// Closes the main window by Alt+F4, as a user does, and waits until it is gone. Sends the keys
    /// again and again, because a window that is not active yet does not get them.
    void closeWindow() const {
        eventually([&] {
            const QString window =
                xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Tidemark$"_s});
            if (!window.isEmpty())
                xdotool({u"windowactivate"_s, window, u"key"_s, u"alt+F4"_s});
            return window.isEmpty();
        });
    }
    QString activeTitle() const { return xdotool({u"getactivewindow"_s, u"getwindowname"_s}); }

    const TemporaryFolder folder;
    const PrivateBus bus;
    std::optional<X11Server> display;
    std::vector<std::unique_ptr<QProcess>> running;
};

} // namespace tidemark::test
