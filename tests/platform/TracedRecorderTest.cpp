#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"
#include "tests/platform/PrivateBus.h"

#include <QProcessEnvironment>
#include <QTimer>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

/// The recording program under strace.
struct TracedRecorder : testing::Test {
    void SetUp() override {
        if (!test::hasPrograms({"strace", "Xvfb", "openbox", "xclip"}))
            GTEST_SKIP() << "strace, Xvfb, openbox or xclip is not installed";
        test::ChildProgram attempt;
        attempt.process.setStandardErrorFile(QProcess::nullDevice());
        attempt.start({u"strace"_s, u"true"_s});
        attempt.output();
        if (attempt.process.exitCode() != 0)
            GTEST_SKIP() << "no program may be traced here";
        server.emplace();
    }
    ~TracedRecorder() override { recorder.stop(); }

    /// Starts the recorder on the display and the bus of the test. `variables` are set last, so
    /// they can replace any of its environment variables.
    void start(const std::map<QString, QString>& variables = {}) {
        std::filesystem::permissions(home.makeFolder("run"), std::filesystem::perms::owner_all);
        home.write("config/Tidemark/settings.json", R"({"memoryClipboard":true})");
        server->prepare(recorder);
        auto environment = recorder.process.processEnvironment();
        const QString root = QString::fromStdString(home.path().native());
        environment.insert(u"HOME"_s, root);
        for (const auto& [variable, folder] : {std::pair(u"XDG_DATA_HOME"_s, u"/data"_s),
                                               std::pair(u"XDG_CONFIG_HOME"_s, u"/config"_s),
                                               std::pair(u"XDG_RUNTIME_DIR"_s, u"/run"_s)})
            environment.insert(variable, root + folder);
        for (const auto& variable : {u"DBUS_SYSTEM_BUS_ADDRESS"_s, u"DBUS_SESSION_BUS_ADDRESS"_s})
            environment.insert(variable, bus.address());
        environment.remove(u"WAYLAND_DISPLAY"_s);
        for (const auto& [variable, value] : variables)
            environment.insert(variable, value);
        recorder.process.setProcessEnvironment(environment);
        recorder.process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        recorder.start({u"strace"_s, u"-D"_s, u"-f"_s, u"-qq"_s, u"-s"_s, u"300"_s, u"-o"_s,
                        QString::fromStdString((home / "trace").native()), u"-e"_s,
                        u"trace=connect,sendto,sendmsg,open,openat"_s,
                        QStringLiteral(TIDEMARK_PROGRAM), u"run"_s, u"--setup"_s, u"none"_s});
    }
    void untilRecorded(const std::string& text) const {
        QTimer look;
        look.start(20);
        test::until([&] {
            const auto file = home / "data/Tidemark/memory-history.json";
            return std::filesystem::exists(file) && test::contents(file).contains(text);
        });
    }
    std::vector<std::string> traced(const std::string& text) const {
        std::vector<std::string> found;
        std::istringstream lines(test::contents(home / "trace"));
        for (std::string line; std::getline(lines, line);)
            if (line.contains(text))
                found.push_back(line);
        return found;
    }

    void expectLocalSockets() const {
        const auto addresses = traced("sa_family=");
        EXPECT_FALSE(addresses.empty());
        for (const auto& line : addresses)
            EXPECT_TRUE(line.contains("sa_family=AF_UNIX") || line.contains("sa_family=AF_NETLINK"))
                << line;
    }

    const test::TemporaryFolder home;
    test::PrivateBus bus;
    std::optional<test::X11Server> server;
    test::ChildProgram recorder;
};

} // namespace

TEST_F(TracedRecorder, ConnectsToLocalSocketsAndOpensNoDocument) {
    home.write("Documents/letter.txt", "Dear");
    start();
    untilRecorded("letter.txt");
    // Copies another text again and again, until the recorder follows the clipboard.
    QTimer user;
    int copies = 0;
    user.callOnTimeout([&] {
        server->run({u"xclip"_s, u"-selection"_s, u"clipboard"_s}, QByteArray::number(++copies));
    });
    user.start(200);
    untilRecorded("\"clipboard\"");
    user.stop();
    recorder.stop();

    expectLocalSockets();
    EXPECT_FALSE(traced("Documents\"").empty()) << "the folder is read";
    EXPECT_EQ(traced("letter.txt"), std::vector<std::string>()) << "the file is not";
}

TEST_F(TracedRecorder, ConnectsToNoOtherMachineThatTheEnvironmentNames) {
    home.write("Documents/letter.txt", "Dear");
    const QString display = QString::fromStdString(server->display());
    start({{u"DISPLAY"_s, u"localhost"_s + display},
           {u"DBUS_SYSTEM_BUS_ADDRESS"_s, u"tcp:host=localhost,port=1"_s},
           {u"DBUS_SESSION_BUS_ADDRESS"_s, u"nonce-tcp:host=localhost,port=1"_s}});
    untilRecorded("letter.txt");
    recorder.stop();
    expectLocalSockets();
}
