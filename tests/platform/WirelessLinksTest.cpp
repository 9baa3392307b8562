#include "platform/linux/WirelessLinks.h"

#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

#include <QDBusMessage>
#include <QDBusObjectPath>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString networkService = u"org.freedesktop.NetworkManager"_s;
const QString root = u"/org/freedesktop"_s;
const QString networkPath = u"/org/freedesktop/NetworkManager"_s;
const QString device = u"org.freedesktop.NetworkManager.Device"_s;
const QString wirelessInterface = u"org.freedesktop.NetworkManager.Device.Wireless"_s;
const QString accessPoint = u"org.freedesktop.NetworkManager.AccessPoint"_s;
const QString wirelessCard = networkPath + u"/Devices/card"_s;

QVariant objectValue(const QString& path) {
    return QVariant::fromValue(QDBusObjectPath(path));
}
QString accessPointPath(const QString& name) {
    return networkPath + u"/AccessPoint/"_s + name;
}

/// A card without an interface in the kernel, so that only NetworkManager reports it.
struct WirelessLinksTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    test::MockService manager{home, bus, u"networkmanager"_s, networkService};
    const test::TemporaryFolder share;
    WirelessLinks links{[this] { return MessageBus(bus); },
                        {.devices = "/nowhere", .dataFolders = {"/none", share.path()}}};
    WiFiSource::Links last;
    int received = 0;

    void follow(WiFiSource::Names names) {
        last.reset();
        EXPECT_TRUE(links.start(names, [this](const WiFiSource::Links& all) {
            last = all;
            ++received;
        }));
    }
    void addPoint(const QString& name, const QString& ssid, quint32 frequency) const {
        manager.control(root, u"AddAccessPoint"_s,
                        {wirelessCard, name, ssid, u"00:11:22:33:44:55"_s, quint32{2}, frequency,
                         quint32{270'000}, QVariant::fromValue(uchar{70}), quint32{0x188}});
        // The template sets both WpaFlags and RsnFlags to the last argument.
        manager.control(accessPointPath(name), u"UpdateProperties"_s,
                        {accessPoint, QVariantMap{{u"WpaFlags"_s, quint32{0}}}});
    }
    /// Adds a card, with the property that the template lacks, and two access points.
    void addCard(int state, const QString& point) const {
        manager.control(root, u"AddWiFiDevice"_s, {u"card"_s, u"card0"_s, state});
        manager.control(
            wirelessCard, u"AddProperties"_s,
            {wirelessInterface, QVariantMap{{u"ActiveAccessPoint"_s, objectValue(point)}}});
        addPoint(u"home"_s, u"Home"_s, 5180);
        addPoint(u"office"_s, u"Office"_s, 2412);
    }
    /// Sets a property by the standard interface, since the mock's own method takes no object
    /// paths.
    void set(const QString& path, const QString& interface, const QString& property,
             const QVariant& value) const {
        auto question = QDBusMessage::createMethodCall(
            networkService, path, u"org.freedesktop.DBus.Properties"_s, u"Set"_s);
        question << interface << property << QVariant::fromValue(QDBusVariant(value));
        const auto reply = bus.call(question);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
    }
    void setState(quint32 state) const { set(wirelessCard, device, u"State"_s, state); }
    void setPoint(const QString& path) const {
        set(wirelessCard, wirelessInterface, u"ActiveAccessPoint"_s, objectValue(path));
    }
    /// The link of the card as text; "none" without a card, "unread" before the first report.
    std::string text() const {
        if (!last || last->empty())
            return last ? "none" : "unread";
        const auto& link = last->front();
        std::string all = link.interface.name;
        all += !link.interface.active ? " unknown" : *link.interface.active ? " up" : " down";
        if (!link.details)
            return all;
        const auto context = WiFiDetails::context(*link.details, true);
        EXPECT_EQ(context.signalDBM, std::nullopt) << "a percentage is no signal strength";
        return all + " " + context.networkName.value_or("-") + " " + context.band.value_or("-")
               + " " + std::to_string(context.channel.value_or(0)) + " "
               + context.security.value_or("-");
    }
    void expect(const std::string& expected) {
        test::until([&] { return text() == expected; });
        EXPECT_EQ(text(), expected);
    }
};

} // namespace

TEST_F(WirelessLinksTest, ReportsTheLinkAndItsNetwork) {
    manager.start();
    follow(WiFiSource::Names::read);
    expect("none");
    addCard(100, accessPointPath(u"home"_s));
    expect("card0 up Home 5 GHz 36 WPA2 Personal");
    setState(110);
    expect("card0 down");
    setState(50);
    setPoint(accessPointPath(u"office"_s));
    setState(70);
    expect("card0 up Office 2.4 GHz 1 WPA2 Personal");
    // Another program manages it from now on.
    setState(10);
    expect("card0 unknown");
    setState(100);
    expect("card0 up Office 2.4 GHz 1 WPA2 Personal");
    // It is an access point for others, and then no longer.
    for (const auto& [mode, expected] : {std::pair<quint32, const char*>{3, "card0 down"},
                                         {2, "card0 up Office 2.4 GHz 1 WPA2 Personal"}}) {
        set(wirelessCard, wirelessInterface, u"Mode"_s, mode);
        setState(mode == 3 ? 90 : 100);
        expect(expected);
    }
    follow(WiFiSource::Names::omit);
    expect("card0 up - 2.4 GHz 1 WPA2 Personal");
    manager.control(networkPath, u"EmitSignal"_s,
                    {networkService, u"DeviceRemoved"_s, u"o"_s,
                     QVariant(QVariantList{objectValue(wirelessCard)})});
    expect("none");
}

TEST_F(WirelessLinksTest, KeepsTheNetworkThroughMomentsWithoutAnAccessPoint) {
    manager.start();
    // The access point is not known yet, then its name is not.
    addCard(100, u"/"_s);
    follow(WiFiSource::Names::read);
    expect("card0 up");
    const auto setName = [&](const QByteArray& name) {
        set(accessPointPath(u"home"_s), accessPoint, u"Ssid"_s, name);
    };
    setName(QByteArray(4, '\0'));
    setPoint(accessPointPath(u"home"_s));
    expect("card0 up - 5 GHz 36 WPA2 Personal");
    setName("Home");
    expect("card0 up Home 5 GHz 36 WPA2 Personal");

    const int before = received;
    setPoint(u"/"_s);
    setState(100);
    test::until([&] { return received > before; });
    expect("card0 up Home 5 GHz 36 WPA2 Personal");
    setState(30);
    expect("card0 down");
    setState(100);
    expect("card0 up");
}

TEST_F(WirelessLinksTest, SaysWhyNamesCantBeRead) {
    const std::string knows = "NetworkManager, which knows the names of Wi-Fi networks, ";
    if (std::filesystem::exists("/etc/dbus-1/system.d/org.freedesktop.NetworkManager.conf"))
        GTEST_SKIP() << "NetworkManager is installed on this machine";
    EXPECT_EQ(links.namesAbsence(), knows + "is not installed.");
    share.write("dbus-1/system.d/org.freedesktop.NetworkManager.conf", "");
    EXPECT_EQ(links.namesAbsence(), std::nullopt) << "it is not known whether it runs";
    follow(WiFiSource::Names::omit);
    expect("none");
    test::until([&] { return links.namesAbsence().has_value(); });
    EXPECT_EQ(links.namesAbsence(), knows + "does not run.");
    manager.start();
    test::until([&] { return !links.namesAbsence(); });
}
