#include "app/base/Background.h"
#include "core/system/LocalSocketAddress.h"
#include "platform/linux/BusAddress.h"
#include "platform/linux/BusProbe.h"
#include "platform/linux/MessageBus.h"
#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/NoThreads.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <cstddef>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

using namespace tidemark;
using busAddress::LocalSocket;

TEST(BusAddress, IsTheFirstAddressIfThatIsALocalSocket) {
    const std::pair<const char*, std::optional<LocalSocket>> cases[] = {
        {"unix:path=/run/dbus/socket", LocalSocket{"/run/dbus/socket", false}},
        {"unix:guid=1,path=/a%20b%2C;unix:path=/c", LocalSocket{"/a b,", false}},
        {"unix:abstract=/tmp/name,guid=1", LocalSocket{"/tmp/name", true}},
        {"tcp:host=example;unix:path=/c", std::nullopt},
        {"unix:path=", std::nullopt},
        {"unix:path=/a%2", std::nullopt},
        {"unix:path=/a%zz", std::nullopt},
        {"unix:tmpdir=/tmp", std::nullopt},
        {"unix:", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, socket] : cases)
        EXPECT_EQ(busAddress::localSocket(text), socket) << text;
}

TEST(BusProbe, ReportsWhetherABusReplies) {
    const auto result = [](const std::string& name, bool isAbstract = false) {
        std::optional<bool> answer;
        const BusProbe probe(LocalSocket{name, isAbstract},
                             [&](bool isThere) { answer = isThere; });
        test::until([&] { return answer.has_value(); });
        return *answer;
    };
    const test::PrivateBus bus;
    const std::string address = bus.address().toStdString();
    EXPECT_TRUE(result(busAddress::localSocket(address).value().name)) << address;

    const test::TemporaryFolder folder;
    EXPECT_FALSE(result((folder / "nothing").native()));
    EXPECT_FALSE(result(std::string(100'000, 'x')));
    const QByteArray flood(70'000, 'x');
    for (const QByteArray& words : {QByteArray(), QByteArray("OK 1234\r\n"),
                                    QByteArray("REJECTED EXTERNAL\r\n more"), flood}) {
        QLocalServer stranger;
        ASSERT_TRUE(stranger.listen(QString::fromStdString((folder / "stranger").native())));
        QObject::connect(&stranger, &QLocalServer::newConnection, [&] {
            auto* client = stranger.nextPendingConnection();
            client->write(words);
            if (words != flood)
                client->disconnectFromServer();
        });
        EXPECT_FALSE(result(stranger.fullServerName().toStdString())) << words.left(40).constData();
    }

    // A name without a file begins with a zero byte (unix(7)).
    const std::string name = (folder / "bus").native();
    sockaddr_un unnamed{};
    unnamed.sun_family = AF_UNIX;
    name.copy(unnamed.sun_path + 1, name.size());
    const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(listening, reinterpret_cast<const sockaddr*>(&unnamed),
                     static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size())),
              0);
    ASSERT_EQ(::listen(listening, 1), 0);
    QLocalServer server;
    ASSERT_TRUE(server.listen(listening));
    QObject::connect(&server, &QLocalServer::newConnection,
                     [&] { server.nextPendingConnection()->write("OK 1234\r\nreply"); });
    EXPECT_TRUE(result(name, /*isAbstract=*/true));
    EXPECT_FALSE(result(name));
}

TEST(BusProbe, DoesNotBlockOnABusThatHangs) {
    const test::TemporaryFolder folder;
    const std::string path = (folder / "stuck").native();
    const auto address = LocalSocketAddress::of(path).value();
    const FileDescriptor listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(listening.get(), address.get(), address.size()), 0);
    ASSERT_EQ(::listen(listening.get(), 0), 0);
    bool hasAnswered = false;
    const auto probe = [&] {
        return std::make_unique<BusProbe>(LocalSocket{path}, [&](bool) { hasAnswered = true; });
    };
    // The first is connected, the others find the connection queue full.
    const auto first = probe();
    test::settle();
    const auto second = probe();
    const auto third = probe();
    test::settle();
    EXPECT_FALSE(hasAnswered);
}

TEST(MessageBus, CallsOnlyReceiversThatExistAndNoneAfterItsEnd) {
    const test::PrivateBus home;
    ::setenv("DBUS_SESSION_BUS_ADDRESS", home.address().toUtf8().constData(), 1);
    int connections = 0;
    // Connecting takes a varying number of events, so the bus is destroyed after 0, 1, 2, … events.
    for (int events = 0; connections < 3; ++events) {
        ASSERT_LT(events, 10'000);
        std::optional<MessageBus> bus(MessageBus::session());
        auto gone = std::make_unique<QObject>();
        QObject receiver;
        bool isOver = false;
        bus->whenConnected(gone.get(), [](const auto&) { ADD_FAILURE() << "it is gone"; });
        bus->whenConnected(&receiver, [&](const auto& connection) {
            EXPECT_TRUE(connection.isConnected());
            EXPECT_FALSE(isOver);
            ++connections;
        });
        gone.reset();
        for (int handled = 0; handled < events; ++handled)
            QCoreApplication::processEvents();
        isOver = true;
        bus.reset();
    }
}

TEST(MessageBus, IsUnavailableIfItsThreadCannotBeStarted) {
    // Qt has not started its thread for message buses yet, and would wait for it for ever.
    const test::TemporaryFolder folder;
    QLocalServer server;
    ASSERT_TRUE(server.listen(QString::fromStdString((folder / "bus").native())));
    QObject::connect(&server, &QLocalServer::newConnection,
                     [&] { server.nextPendingConnection()->write("OK 1234\r\nreply"); });
    ::setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + (folder / "bus").native()).c_str(), 1);
    test::await(runInBackground([](const std::stop_token&) {}));
    const test::NoThreads refused;
    const MessageBus bus = MessageBus::session();
    QObject receiver;
    std::optional<bool> isConnected;
    bus.whenConnected(&receiver,
                      [&](const auto& connection) { isConnected = connection.isConnected(); });
    test::until([&] { return isConnected.has_value(); });
    EXPECT_EQ(isConnected, false);
}
