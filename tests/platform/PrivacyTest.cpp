#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QProcessEnvironment>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString managerName = u"org.freedesktop.NetworkManager"_s;
const QString managerRoot = u"/org/freedesktop"_s;
const QString cardPath = u"/org/freedesktop/NetworkManager/Devices/card"_s;
const QString pointPath = u"/org/freedesktop/NetworkManager/AccessPoint/home"_s;
const QString wireless = u"org.freedesktop.NetworkManager.Device.Wireless"_s;

/// The methods that a recorder may call on the bus and on the services of the machine. They change
/// nothing, except that `Inhibit` takes the lock that delays sleep. In addition, it may start
/// UPower.
const QStringList harmless{
    u"Hello"_s,  u"AddMatch"_s,          u"RemoveMatch"_s,      u"GetNameOwner"_s,    u"Get"_s,
    u"GetAll"_s, u"GetManagedObjects"_s, u"EnumerateDevices"_s, u"GetSessionByPID"_s, u"GetUser"_s,
    u"Inhibit"_s};

/// The recording program, with mocks of NetworkManager and BlueZ on a bus whose messages are
/// written down.
struct Privacy : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"machine"_s);
    test::MockService manager{home, bus, u"networkmanager"_s, managerName};
    test::MockService bluez{home, bus, u"bluez5"_s, u"org.bluez"_s};
    test::TemporaryFolder folder;
    QProcess listener;
    QString messages;
    QProcess recorder;

    ~Privacy() override {
        for (QProcess* process : {&recorder, &listener}) {
            process->kill();
            process->waitForFinished();
        }
    }

    QString root() const { return QString::fromStdString(folder.path().native()); }

    void startMachine() {
        manager.start();
        manager.control(managerRoot, u"AddWiFiDevice"_s, {u"card"_s, u"card0"_s, 100});
        manager.control(managerRoot, u"AddAccessPoint"_s,
                        {cardPath, u"home"_s, u"Secret"_s, u"00:11:22:33:44:55"_s, quint32{2},
                         quint32{5180}, quint32{270'000}, QVariant::fromValue(uchar{70}),
                         quint32{0x188}});
        manager.control(cardPath, u"AddProperties"_s,
                        {wireless, QVariantMap{{u"ActiveAccessPoint"_s,
                                                QVariant::fromValue(QDBusObjectPath(pointPath))}}});
        bluez.start();
        startListening();
    }
    void startListening() {
        listener.start(u"dbus-monitor"_s, {u"--address"_s, home.address()});
        QObject::connect(&listener, &QProcess::readyRead,
                         [this] { messages += QString::fromUtf8(listener.readAll()); });
        QTimer question;
        question.callOnTimeout([this] {
            bus.send(QDBusMessage::createMethodCall(u"org.bluez"_s, u"/"_s,
                                                    u"org.freedesktop.DBus.Peer"_s, u"Ping"_s));
        });
        question.start(20);
        test::until([&] { return messages.contains(u"Ping"_s); });
    }
    void startRecorder(const QString& settings) {
        std::filesystem::permissions(folder.makeFolder("run"), std::filesystem::perms::owner_all);
        folder.write("config/Tidemark/settings.json", settings.toStdString());
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, root());
        environment.insert(u"XDG_DATA_HOME"_s, root() + u"/data"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, root() + u"/config"_s);
        environment.insert(u"XDG_RUNTIME_DIR"_s, root() + u"/run"_s);
        environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, home.address());
        recorder.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        for (const auto& elsewhere :
             {u"DBUS_SESSION_BUS_ADDRESS"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s})
            environment.remove(elsewhere);
        recorder.setProcessEnvironment(environment);
        recorder.start(QStringLiteral(TIDEMARK_PROGRAM), {u"run"_s, u"--setup"_s, u"none"_s});
    }
    void stopRecorder() {
        recorder.terminate();
        test::until([&] { return recorder.state() == QProcess::NotRunning; });
    }
    void untilSaid(const QString& text) {
        test::until([&] { return messages.contains(text); });
    }
    /// The method calls of the recorder. Each text has the first line of a call, and its arguments
    /// on the lines below.
    QStringList calls() const {
        QStringList found;
        for (const QString& message : messages.split(QRegularExpression(u"\n(?=[a-z])"_s)))
            if (message.startsWith(u"method call"_s)
                && !message.contains(u"sender="_s + bus.baseService() + u' ')
                && !message.contains(u"interface=org.freedesktop.DBus.Monitoring"_s))
                found.push_back(message);
        return found;
    }
};

QString part(const QString& call, const char* pattern) {
    return QRegularExpression(QLatin1String(pattern)).match(call).captured(1);
}

} // namespace

TEST_F(Privacy, AsksOnlyWhatChangesNothing) {
    startMachine();
    startRecorder(u"{}"_s);
    untilSaid(u"RsnFlags"_s);
    untilSaid(u"member=GetManagedObjects"_s);
    stopRecorder();

    EXPECT_GT(calls().size(), 20);
    for (const QString& call : calls()) {
        const QString destination = part(call, "destination=(\\S+)");
        const QString member = part(call, "member=(\\S+)");
        // A call to the name of a service could start it.
        EXPECT_TRUE(destination == u"org.freedesktop.DBus"_s || destination.startsWith(u':'))
            << qPrintable(call);
        if (member == u"StartServiceByName"_s)
            EXPECT_TRUE(call.contains(u"\"org.freedesktop.UPower\""_s)) << qPrintable(call);
        else
            EXPECT_TRUE(harmless.contains(member)) << qPrintable(call);
        EXPECT_FALSE(call.contains(u"\"Ssid\""_s)) << qPrintable(call);
        // This call would return the name of the network as well.
        EXPECT_FALSE(member == u"GetAll"_s && call.contains(u".AccessPoint\""_s))
            << qPrintable(call);
    }
    EXPECT_FALSE(messages.contains(u"Secret"_s));
}

TEST_F(Privacy, ReadsTheNameOfTheNetworkWhenTheUserTurnedItOn) {
    startMachine();
    startRecorder(u"{\"wifiNetworkNamesEnabled\":true}"_s);
    untilSaid(u"\"Ssid\""_s);
    stopRecorder();
}
