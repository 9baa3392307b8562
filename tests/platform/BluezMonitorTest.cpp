#include "platform/linux/BluezMonitor.h"

#include "platform/linux/BluetoothPresence.h"
#include "tests/app/support/Await.h"
#include "tests/platform/PrivateBus.h"

#include <QDBusObjectPath>
#include <functional>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;

namespace {

const QString deviceInterface = u"org.bluez.Device1"_s;
const QString adapterInterface = u"org.bluez.Adapter1"_s;
const QString headsetPath = u"/org/bluez/hci0/dev_AA_BB_CC_DD_EE_FF"_s;
const QString adapterPath = u"/org/bluez/hci0"_s;

struct BluezMonitorTest : testing::Test {
    test::PrivateBus home;
    QDBusConnection bus = home.connect(u"tested"_s);
    test::MockService bluez{home, bus, u"bluez5"_s, u"org.bluez"_s};
    BluezMonitor monitor{[this] { return MessageBus(bus); }};
    BluetoothSource::State last;
    int states = 0;

    void follow() {
        monitor.start([this](const BluetoothSource::State& state) {
            last = state;
            ++states;
        });
    }
    void mock(const QString& method, const QVariantList& arguments) const {
        auto question =
            QDBusMessage::createMethodCall(u"org.bluez"_s, u"/"_s, u"org.bluez.Mock"_s, method);
        question.setArguments(arguments);
        const auto reply = bus.call(question);
        ASSERT_EQ(reply.type(), QDBusMessage::ReplyMessage) << qPrintable(reply.errorMessage());
    }
    void addHeadset() const {
        mock(u"AddAdapter"_s, {u"hci0"_s, u"machine"_s});
        mock(u"AddDevice"_s, {u"hci0"_s, u"AA:BB:CC:DD:EE:FF"_s, u"Headset"_s});
    }
    /// Changes properties of an object. The mock's methods with the names of BlueZ's own only send
    /// signals; this also changes the values that the mock answers.
    void change(const QString& path, const QString& interface, const QVariantMap& values) const {
        bluez.control(path, u"UpdateProperties"_s, {interface, values});
    }
    void changeHeadset(const QVariantMap& values) const {
        change(headsetPath, deviceInterface, values);
    }
    void pair() const { changeHeadset({{u"Paired"_s, true}, {u"Class"_s, quint32{0x240404}}}); }
    void expectDevices(const std::vector<BluetoothDevice>& devices) {
        test::until([&] { return last.paired == devices && last.isPoweredOn == true; });
    }
    void expectRadio(std::optional<bool> radio) {
        test::until([&] { return states > 0 && last.isPoweredOn == radio; });
    }
    static BluetoothDevice headset(bool connected) {
        return {"AA:BB:CC:DD:EE:FF", "Headset", 4, connected};
    }
};

} // namespace

TEST_F(BluezMonitorTest, ReportsRadioAndPairedDevices) {
    bluez.start();
    follow();
    expectRadio(std::nullopt);
    addHeadset();
    expectDevices({});
    // An adapter that BlueZ reports is enough, whatever the files of the machine say.
    EXPECT_EQ(monitor.absence(), std::nullopt);
    pair();
    expectDevices({headset(false)});
    changeHeadset({{u"Connected"_s, true}});
    expectDevices({headset(true)});
    change(adapterPath, adapterInterface, {{u"Powered"_s, false}});
    expectRadio(false);
    change(adapterPath, adapterInterface, {{u"Powered"_s, true}});
    expectDevices({headset(true)});
    // As when a device that hid its address is paired.
    auto renamed = headset(true);
    renamed.address = "11:22:33:44:55:66";
    changeHeadset({{u"Address"_s, u"11:22:33:44:55:66"_s}});
    expectDevices({renamed});
    changeHeadset({{u"Address"_s, u"AA:BB:CC:DD:EE:FF"_s}, {u"Paired"_s, false}});
    expectDevices({});
    // The mock keeps the devices of a removed adapter, as the real service may.
    pair();
    expectDevices({headset(true)});
    mock(u"RemoveAdapter"_s, {u"hci0"_s});
    expectRadio(std::nullopt);
    EXPECT_EQ(last.paired, std::vector<BluetoothDevice>{});
    EXPECT_EQ(monitor.absence(), "This computer has no Bluetooth adapter.");
}

TEST_F(BluezMonitorTest, IgnoresWhatASearchForDevicesReports) {
    bluez.start();
    addHeadset();
    pair();
    follow();
    expectDevices({headset(false)});
    const int before = states;
    const auto search = [&](int signals) {
        for (int i = 0; i < signals; ++i)
            changeHeadset({{u"RSSI"_s, QVariant::fromValue(static_cast<short>(-i))}});
    };
    search(20);
    mock(u"AddDevice"_s, {u"hci0"_s, u"11:11:11:11:11:11"_s, u"Near by"_s});
    // This change is handled after all the signals above.
    changeHeadset({{u"Connected"_s, true}});
    expectDevices({headset(true)});
    EXPECT_EQ(states, before + 1);

    // These are too many, so the monitor unsubscribes for a while. It misses the change after them,
    // and reads it after the pause.
    search(2 * GuardedSubscription::mostPerSecond);
    test::settle();
    changeHeadset({{u"Connected"_s, false}});
    expectDevices({headset(false)});
}

TEST(BluetoothPresence, SaysWhatIsMissing) {
    const test::TemporaryFolder folder;
    const auto absence = [&] {
        return bluetoothPresence::absence(folder / "adapters", {folder / "none", folder / "share"})
            .value_or("nothing");
    };
    EXPECT_EQ(absence(), "This computer has no Bluetooth adapter.");
    folder.makeFolder("adapters/hci0");
    EXPECT_EQ(absence(), "The Bluetooth service BlueZ is not installed.");
    folder.write("share/dbus-1/system-services/org.bluez.service", "");
    EXPECT_EQ(absence(), "nothing");
}
