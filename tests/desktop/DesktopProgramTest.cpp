#include "tests/desktop/Desktop.h"
#include "tests/platform/EmbeddingTray.h"
#include "tests/platform/NotifierWatcher.h"

#include <csignal>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

using test::Desktop;

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
    // Presses the keys again and again until the program has grabbed them.
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
        closeWindow();
        panel.stop();
        // When the icon disappears, a window is opened.
        EXPECT_FALSE(visible(u"^Tidemark$"_s).isEmpty());
        EXPECT_EQ(program.state(), QProcess::Running);
    }
}

TEST_F(Desktop, ShowsItsIconToAPanelThatEmbedsIcons) {
    QProcess& program = startWindows();
    std::optional<test::EmbeddingTray> panel(display->display());
    eventually([&] { return panel->wasAsked(); });
    closeWindow();
    panel.reset();
    EXPECT_FALSE(visible(u"^Tidemark$"_s).isEmpty());
    EXPECT_EQ(program.state(), QProcess::Running);
    closeWindow();
    EXPECT_EQ(end(program), 0);
}

TEST(Programs, LinkTheLibraryOfWidgetsOnlyForTheDesktop) {
    const auto needsWidgets = [](const char* program) {
        QProcess process;
        process.start(u"ldd"_s, {QString::fromUtf8(program)});
        process.waitForFinished(60'000);
        const QByteArray libraries = process.readAllStandardOutput();
        EXPECT_TRUE(libraries.contains("libQt6Core"));
        return libraries.contains("libQt6Gui") || libraries.contains("libQt6Widgets");
    };
    EXPECT_TRUE(needsWidgets(TIDEMARK_DESKTOP));
    EXPECT_FALSE(needsWidgets(TIDEMARK_PROGRAM));
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

TEST_F(Desktop, ReportsItsVersionBesideOtherOptionsAndWithoutADisplay) {
    QProcess process;
    auto variables = environment();
    variables.insert(u"DISPLAY"_s, u""_s);
    process.setProcessEnvironment(variables);
    process.start(QString::fromUtf8(TIDEMARK_DESKTOP), {u"--background"_s, u"--version"_s});
    process.waitForFinished(60'000);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(process.readAllStandardOutput().startsWith("tidemark-desktop "));
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
