#include "app/control/ControlServer.h"
#include "core/base/Files.h"
#include "tests/app/support/Await.h"
#include "tests/desktop/ProgramEnvironment.h"

#include <QProcess>
#include <QTimer>
#include <array>
#include <optional>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

/// The test is a recorder that ends while a program asks it: it has locked the data folder, accepts
/// the connection, and closes it without an answer.
struct HandOver : testing::Test {
    HandOver() {
        std::filesystem::permissions(folder.makeFolder("run"), std::filesystem::perms::owner_all);
        createPrivateFolders(data);
        lock.emplace(FolderLock::take(data).value());
        ending = std::make_unique<LocalListener>(sockets.front(), *lock,
                                                 [this](FileDescriptor client) { take(client); });
    }
    void start(const char* path, const QStringList& arguments) {
        program.setProcessEnvironment(
            test::programEnvironment(folder, u"unix:path=/nonexistent"_s, u"offscreen"_s));
        program.start(QString::fromUtf8(path), arguments);
    }
    /// Receives the request of a client. The caller closes the connection afterwards.
    void take(const FileDescriptor& client) {
        pollfd state{client.get(), POLLIN, 0};
        EXPECT_EQ(::poll(&state, 1, -1), 1);
        std::array<char, 4096> request{};
        wasAsked = ::recv(client.get(), request.data(), request.size(), 0) > 0;
    }
    /// Closes the sockets when the program has asked, as a recorder that ends does. The folder
    /// stays locked until the test resets `lock`.
    void endWhenAsked() {
        test::until([&] { return wasAsked || program.state() == QProcess::NotRunning; });
        EXPECT_TRUE(wasAsked);
        ending.reset();
    }
    int status() {
        test::until([&] { return program.state() == QProcess::NotRunning; });
        return program.exitCode();
    }

    const test::TemporaryFolder folder;
    const std::filesystem::path data = folder / "data/Tidemark";
    const std::vector<std::filesystem::path> sockets =
        controlProtocol::socketPaths(data, folder.path() / "run");
    std::optional<FolderLock> lock;
    std::unique_ptr<LocalListener> ending;
    bool wasAsked = false;
    QProcess program;
};

} // namespace

TEST_F(HandOver, ACommandForTheWindowAwaitsTheProgramThatTakesOver) {
    start(TIDEMARK_PROGRAM, {u"window"_s});
    endWhenAsked();
    std::string received;
    ControlServer successor(
        [&](ControlRequest request, std::stop_token) -> QCoro::Task<ControlAnswer> {
            received = request.command;
            co_return ControlAnswer{};
        });
    successor.listen(sockets, *lock);
    EXPECT_EQ(status(), 0) << program.readAllStandardError().toStdString();
    EXPECT_EQ(received, "window");
}

TEST_F(HandOver, ACommandForTheWindowEndsWhenNoProgramFollows) {
    start(TIDEMARK_PROGRAM, {u"window"_s});
    endWhenAsked();
    lock.reset();
    EXPECT_EQ(status(), 1);
    EXPECT_EQ(program.readAllStandardError(),
              "tidemark: No window is open; tidemark-desktop opens one.\n");
}

TEST_F(HandOver, ACommandThatMayHaveBeenCarriedOutIsNotRepeated) {
    start(TIDEMARK_PROGRAM, {u"capture"_s});
    endWhenAsked();
    lock.reset();
    EXPECT_EQ(status(), 1);
    EXPECT_TRUE(program.readAllStandardError().contains("not known whether"));
    EXPECT_FALSE(std::filesystem::exists(data / "journal.json"));
}

TEST_F(HandOver, TheProgramWithWindowsFollowsARecorderThatEndsMeanwhile) {
    start(TIDEMARK_DESKTOP, {});
    endWhenAsked();
    lock.reset();
    QTimer asking;
    asking.start(20);
    test::until([&] { return std::filesystem::exists(sockets.front()); });
    EXPECT_TRUE(FolderLock::isTaken(data));
    program.terminate();
    EXPECT_EQ(status(), 0) << program.readAllStandardError().toStdString();
}
