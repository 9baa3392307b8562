#include "app/control/ControlServer.h"

#include "app/base/Background.h"
#include "app/control/ControlClient.h"
#include "core/base/Error.h"
#include "core/system/LocalSocketAddress.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/support/Contains.h"
#include "tests/support/Failure.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>

using namespace tidemark;
using test::TemporaryFolder;

namespace {

constexpr std::size_t megabyte = 1'000'000;

FileDescriptor connectRaw(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        socket.reset();
    return socket;
}

/// Returns how many bytes could be sent before the other end closed.
std::size_t sendRaw(const FileDescriptor& socket, std::string_view bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(socket.get(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            break;
        sent += static_cast<std::size_t>(count);
    }
    return sent;
}

/// Reads until the other end closes.
std::string readToEnd(const FileDescriptor& socket) {
    std::string all;
    std::string block(megabyte, '\0');
    for (ssize_t count = 0; (count = ::recv(socket.get(), block.data(), block.size(), 0)) > 0;)
        all.append(block, 0, static_cast<std::size_t>(count));
    return all;
}

bool isReadable(const FileDescriptor& socket) {
    char byte = 0;
    return ::recv(socket.get(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
}

std::string framed(std::string_view json) {
    return std::string("\0\0", 2) + static_cast<char>(json.size() >> 8U)
           + static_cast<char>(json.size() & 0xFFU) + std::string(json);
}

ControlRequest request(std::string command) {
    return {ControlRequest::currentVersion, std::move(command), R"({"name":"naïve\n"})", true};
}

struct ControlServerTest : testing::Test {
    TemporaryFolder folder;
    std::vector<std::filesystem::path> sockets =
        controlProtocol::socketPaths(folder.path(), folder.path());
    std::filesystem::path socket = sockets.front();
    test::ManualAppClock clock;
    FolderLock lock = FolderLock::take(folder.path()).value();
    bool wasStopped = false;
    std::vector<ControlRequest> requests;
    std::unique_ptr<ControlServer> server;

    void SetUp() override { listen(); }
    void listen() {
        server = std::make_unique<ControlServer>(
            [this](const ControlRequest& asked, const std::stop_token& stop) {
                return handle(asked, stop);
            },
            clock);
        server->listen(sockets, lock);
    }
    /// Connects and sends a request.
    FileDescriptor begin(const char* command) const {
        FileDescriptor client = connectRaw(socket);
        sendRaw(client, controlProtocol::requestFrame(request(command)));
        return client;
    }

    QCoro::Task<ControlAnswer> handle(ControlRequest asked, std::stop_token stop) {
        requests.push_back(asked);
        const std::string& word = asked.command;
        if (word == "fail")
            throw Error("It did not work.");
        if (word == "wait")
            wasStopped = !co_await clock.sleep(1000, stop, AppClock::Slack::none);
        if (word == "hang")
            co_await clock.sleep(1000, {}, AppClock::Slack::none);
        if (word == "large")
            co_return ControlAnswer{0, std::string(50 * megabyte, '"'), ""};
        co_return ControlAnswer{3, "did " + word, "é\n"};
    }

    std::optional<ControlAnswer> ask(std::string command) {
        const auto asking = [&](const std::stop_token&) {
            return ControlClient::ask(sockets, request(std::move(command)));
        };
        // At the low priority of other background work, 50 MB would take minutes on a busy machine.
        return test::await(runInBackground(asking, {}, WorkPriority::userInitiated));
    }
    std::string answerTo(const std::string& bytes) {
        const auto talking = [&](const std::stop_token&) {
            const auto client = connectRaw(socket);
            sendRaw(client, bytes);
            return readToEnd(client);
        };
        return test::await(runInBackground(talking));
    }
    void untilServed(std::size_t connections) {
        test::until([&] { return server->connectionCount() == connections; });
    }
};

} // namespace

TEST_F(ControlServerTest, CarriesOutRequestsOfTheSameUser) {
    EXPECT_EQ(ask("events"), (ControlAnswer{3, "did events", "é\n"}));
    EXPECT_EQ(requests, std::vector{request("events")});
    EXPECT_EQ(ask("fail"), (ControlAnswer{1, "", "It did not work."}));
    EXPECT_EQ(ask("large")->output, std::string(50 * megabyte, '"'));
    EXPECT_EQ(test::modeOf(socket), 0600U);
    EXPECT_EQ(test::modeOf(socket.parent_path()), 0700U);

    server.reset();
    EXPECT_FALSE(ask("events"));
    EXPECT_FALSE(std::filesystem::exists(socket));
}

TEST_F(ControlServerTest, TheClientRefusesARequestThatIsTooLong) {
    EXPECT_THROW(ask(std::string(controlProtocol::mostRequestBytes, 'a')), Error);
    EXPECT_EQ(ask(std::string(std::size_t{63} * 1024, 'a'))->status, 3);
}

TEST_F(ControlServerTest, DropsOrRefusesInvalidRequests) {
    const std::string good = R"({"version":2,"command":"a","options":"{}","colour":false})";
    const std::pair<std::string, std::string_view> cases[] = {
        {"GET / HTTP/1.1\r\n\r\n", ""},
        {std::string(4, '\0'), ""},
        {std::string("\0\x10\0\x01", 4) + "{", ""},
        {std::string(4, '\xFF'), ""},
        {framed(good) + "more", ""},
        {framed("{}"), "required"},
        {framed("nonsense"), "\"status\":1"},
        {framed(std::string(60'000, '[')), "\"status\":1"},
        {framed(R"({"version":1,"arguments":["a"],"colour":false,"directory":"/"})"),
         "The running recorder is of another version of Tidemark."},
    };
    for (const auto& [bytes, expected] : cases) {
        const std::string answer = answerTo(bytes);
        EXPECT_EQ(answer.empty(), expected.empty()) << bytes.substr(0, 40) << answer;
        EXPECT_TRUE(test::contains(answer, expected));
    }
    EXPECT_TRUE(requests.empty());
    EXPECT_NE(answerTo(framed(good)).find("did a"), std::string::npos);
}

TEST_F(ControlServerTest, ReadsNoMoreThanOneRequestFromAClient) {
    for (const std::string& start : {std::string("\x06\0\0\0", 4), framed("{}"), framed("")}) {
        const auto flooding = [&](const std::stop_token&) {
            const auto client = connectRaw(socket);
            return sendRaw(client, start + std::string(100 * megabyte, 'x'));
        };
        EXPECT_LT(test::await(runInBackground(flooding)), megabyte);
    }
    untilServed(0);
}

TEST_F(ControlServerTest, DropsAClientThatSendsHalfARequestAfterFiveSeconds) {
    const std::string whole = framed(R"({"version":2,"command":"","options":"","colour":false})");
    const auto silent = connectRaw(socket);
    const auto half = connectRaw(socket);
    untilServed(2);
    sendRaw(half, std::string_view(whole).substr(0, 20));
    test::settle();
    clock.advance(4.9);
    sendRaw(half, std::string_view(whole).substr(20, 10));
    test::settle();
    EXPECT_EQ(server->connectionCount(), 2U);
    clock.advance(0.1);
    EXPECT_EQ(server->connectionCount(), 0U);
    EXPECT_EQ(readToEnd(half), "");
    EXPECT_EQ(readToEnd(silent), "");
    EXPECT_TRUE(requests.empty());
}

TEST_F(ControlServerTest, DropsAClientThatDoesNotReadItsAnswerAndServesOthersMeanwhile) {
    const auto lazy = begin("large");
    test::until([&] { return isReadable(lazy); });
    clock.advance(29);
    EXPECT_EQ(ask("quick")->output, "did quick");
    EXPECT_EQ(server->connectionCount(), 1U);
    clock.advance(1);
    EXPECT_EQ(server->connectionCount(), 0U);
    EXPECT_LT(readToEnd(lazy).size(), 2 * megabyte);
}

TEST_F(ControlServerTest, StopsTheCommandOfAClientThatDisconnects) {
    {
        const auto client = begin("wait");
        test::until([&] { return !requests.empty(); });
        clock.advance(60);
        EXPECT_EQ(server->connectionCount(), 1U) << "the deadline is only for the request";
    }
    test::until([&] { return wasStopped; });
    EXPECT_EQ(server->connectionCount(), 0U);

    // The command is also stopped when the server is destroyed.
    wasStopped = false;
    const auto client = begin("wait");
    test::until([&] { return requests.size() == 2; });
    server.reset();
    EXPECT_TRUE(wasStopped);
    EXPECT_EQ(readToEnd(client), "");
}

TEST_F(ControlServerTest, RefusesMoreThanTheLimitOfUnstoppableCommands) {
    for (std::size_t count = 1; count <= ControlServer::mostCommands; ++count) {
        const auto client = begin("hang");
        test::until([&] { return requests.size() == count; });
    }
    untilServed(0);
    EXPECT_NE(ask("another")->error.find("still busy"), std::string::npos);
    EXPECT_EQ(requests.size(), ControlServer::mostCommands);
    clock.advance(1000);
    EXPECT_EQ(ask("another")->output, "did another");
}

TEST_F(ControlServerTest, ServesSixteenClientsAtOnceAndTheOthersInTurn) {
    std::vector<FileDescriptor> silent;
    for (int count = 0; count < 40; ++count)
        silent.push_back(connectRaw(socket));
    untilServed(16);
    test::settle();
    EXPECT_EQ(server->connectionCount(), 16U);
    const auto last = begin("patient");
    for (int round = 0; round < 3; ++round) {
        clock.advance(5);
        test::settle();
    }
    test::until([&] { return isReadable(last); });
    EXPECT_EQ(requests.size(), 1U);
}

TEST_F(ControlServerTest, RefusesAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    for (const auto& path : {folder.path(), socket.parent_path(), socket})
        std::filesystem::permissions(path, std::filesystem::perms(0777));
    const std::string bytes = controlProtocol::requestFrame(request("intrude"));
    const auto intruding = [&](const std::stop_token&) {
        const pid_t child = ::fork();
        if (child == 0) {
            if (::setuid(65534) != 0)
                ::_exit(2);
            const auto client = connectRaw(socket);
            sendRaw(client, bytes);
            char byte = 0;
            ::_exit(client && ::recv(client.get(), &byte, 1, 0) <= 0 ? 0 : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return status;
    };
    EXPECT_EQ(test::await(runInBackground(intruding)), 0);
    EXPECT_TRUE(requests.empty());
    EXPECT_EQ(ask("own")->output, "did own");

    // The client refuses a socket of another user, and the server refuses a folder of another user.
    const auto foreign = folder.makeFolder("foreign");
    ASSERT_EQ(::chown(foreign.c_str(), 65534, 65534), 0);
    std::filesystem::permissions(foreign, std::filesystem::perms(0700));
    EXPECT_THROW(LocalListener(foreign / "own", lock, [](FileDescriptor) {}), Error);
    const FileDescriptor listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const auto address = LocalSocketAddress::of(foreign / "socket").value();
    {
        const test::OrdinaryUser user(folder.path());
        ASSERT_EQ(::bind(listening.get(), address.get(), address.size()), 0);
        ASSERT_EQ(::listen(listening.get(), 1), 0);
    }
    sockets = {foreign / "socket"};
    EXPECT_EQ(test::failureOf([&] {
                  ControlClient::ask(sockets, request("betray"),
                                     {.answer = std::chrono::milliseconds(20)});
              }),
              "The recorder's socket belongs to another user.");
}

TEST_F(ControlServerTest, ReplacesOnlyTheSocketOfADeadRecorder) {
    server.reset();
    const auto kept = [&] {
        const TemporaryFolder other;
        auto otherLock = FolderLock::take(other.path()).value();
        LocalListener listener(socket, otherLock, [](FileDescriptor) {});
        std::filesystem::rename(socket, folder / "kept");
    };
    kept();
    std::filesystem::rename(folder / "kept", socket);
    EXPECT_FALSE(ask("events")) << "no process listens";

    listen();
    EXPECT_TRUE(ask("events"));
    EXPECT_FALSE(FolderLock::take(folder.path())) << "a second recorder can't lock the folder";

    const auto refuses = [&](const std::filesystem::path& path) {
        EXPECT_THROW(LocalListener(path, lock, [](FileDescriptor) {}), Error) << path;
    };
    folder.write("Tidemark/file", "");
    refuses(folder / "Tidemark/file");
    refuses(folder / ("Tidemark/" + std::string(108, 'x')));
    std::filesystem::permissions(folder.makeFolder("open"), std::filesystem::perms(0755));
    refuses(folder / "open/socket");
    std::filesystem::create_directory_symlink(folder / "Tidemark", folder / "link");
    refuses(folder / "link/socket");
}

TEST_F(ControlServerTest, RestoresItsOwnSocketAndKeepsThatOfASuccessor) {
    const auto lookAgain = [&] { clock.advance(ControlServer::restoringInterval); };
    std::filesystem::remove_all(socket.parent_path());
    EXPECT_FALSE(ask({"lost"}));
    lookAgain();
    EXPECT_EQ(ask({"found"})->output, "did found");
    EXPECT_EQ(test::modeOf(socket), 0600U);
    static int lines = 0;
    const auto before = qInstallMessageHandler([](auto, const auto&, const auto&) { ++lines; });
    lookAgain();
    EXPECT_EQ(lines, 0) << "its socket is there";
    std::filesystem::remove(socket);
    std::filesystem::permissions(socket.parent_path(), std::filesystem::perms(0755));
    for (int times = 0; times < 3; ++times)
        lookAgain();
    qInstallMessageHandler(before);
    EXPECT_EQ(lines, 1) << "the same problem";
    std::filesystem::permissions(socket.parent_path(), std::filesystem::perms(0700));
    lookAgain();
    EXPECT_TRUE(std::filesystem::exists(socket));

    // Another recorder has locked a new lock file, as after a replacement of the data folder.
    std::filesystem::remove(folder / "recorder.lock");
    const auto otherLock = FolderLock::take(folder.path()).value();
    {
        const LocalListener successor(socket, otherLock, [](FileDescriptor) {});
        lookAgain();
        server.reset();
        EXPECT_TRUE(std::filesystem::exists(socket));
        EXPECT_TRUE(connectRaw(socket)) << "the successor still listens";
    }
    EXPECT_FALSE(std::filesystem::exists(socket));
}

TEST_F(ControlServerTest, CreatesNoSocketAfterItLostTheLock) {
    std::filesystem::remove(socket);
    std::filesystem::remove(folder / "recorder.lock");
    clock.advance(ControlServer::restoringInterval);
    EXPECT_FALSE(std::filesystem::exists(socket));
}

TEST_F(ControlServerTest, ListensInTheDataFolderWithoutARuntimeFolder) {
    server.reset();
    std::filesystem::path data = folder.path();
    while (data.native().size() < 200)
        data /= std::string(50, 'd');
    folder.makeFolder(data.native().substr(folder.path().native().size() + 1));
    // The path in the runtime folder can't be used, so server and client use the one in the data
    // folder.
    std::filesystem::remove_all(folder / "Tidemark");
    folder.write("Tidemark", "in the way");
    for (const auto& runtime :
         {std::optional(folder.path()), std::optional<std::filesystem::path>()}) {
        sockets = controlProtocol::socketPaths(data, runtime);
        listen();
        sockets = controlProtocol::socketPaths(data, folder.path());
        EXPECT_EQ(ask({"far"})->output, "did far");
        EXPECT_EQ(test::modeOf(sockets.back().parent_path()), 0700U);
        server.reset();
        EXPECT_FALSE(std::filesystem::exists(sockets.back()));
        std::filesystem::remove_all(sockets.back().parent_path());
        EXPECT_FALSE(ask({"nobody"})) << "not even a folder is there";
    }
}

TEST_F(ControlServerTest, ReportsAFullQueueInOneSentence) {
    server.reset();
    FileDescriptor listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const auto address = LocalSocketAddress::of(socket).value();
    ASSERT_EQ(::bind(listening.get(), address.get(), address.size()), 0);
    ASSERT_EQ(::listen(listening.get(), 0), 0);
    const auto first = connectRaw(socket);
    static int lines = 0;
    const auto before = qInstallMessageHandler([](auto, const auto&, const auto&) { ++lines; });
    const std::string sentence = test::failureOf([&] {
        ControlClient::ask(sockets, request({"late"}),
                           {.connection = std::chrono::milliseconds(20)});
    });
    qInstallMessageHandler(before);
    EXPECT_EQ(sentence, "The running recorder is busy: too many commands wait for it already.");
    EXPECT_EQ(lines, 0);
}
