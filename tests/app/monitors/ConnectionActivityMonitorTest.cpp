#include "app/monitors/ConnectionActivityMonitor.h"

#include "app/preferences/PreferenceKeys.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

using Availability = NetworkConnectionState::Availability;
using Interface = NetworkConnectionState::Interface;

const auto ethernet = NetworkConnectionState::make(Availability::available, {Interface::ethernet});
const auto wifiPath = NetworkConnectionState::make(Availability::available, {Interface::wifi});
const auto nothing = NetworkConnectionState::make(Availability::unavailable, {});

/// A source that notes how it was started and sends on demand. It can also send after it was
/// stopped, as one that delivers from another thread may.
template <class Port>
struct Sending : Port {
    void start(typename Port::Receive receive) override {
        send = std::move(receive);
        running = true;
    }
    void stop() override { running = false; }

    typename Port::Receive send;
    bool running = false;
};

struct SendingWiFi final : WiFiSource {
    bool start(Names given, Receive receive) override {
        names = given;
        send = std::move(receive);
        return works;
    }
    void stop() override {}
    /// One interface; the network has a name if names are read.
    void sendNetwork(const char* name, std::int64_t channel = 1) const {
        WiFiDetails::Reading reading;
        reading.channel = channel;
        if (names == Names::read)
            reading.networkName = name;
        send(std::vector{Link{{"wlan0", true}, reading}});
    }
    void sendDown() const { send(std::vector{Link{{"wlan0", false}}}); }

    Names names = Names::omit;
    Receive send;
    bool works = true;
};

struct Access final : WiFiNameAccess {
    Permission permission() const override { return granted; }
    bool isServiceOn() const override { return true; }
    void request() override { log += "request "; }
    void openSettings() override { log += "settings "; }
    void follow(std::function<void()> to) override { changed = std::move(to); }

    Permission granted = Permission::undetermined;
    std::string log;
    std::function<void()> changed;
};

struct ConnectionActivityMonitorTest : testing::Test {
    ConnectionActivityMonitorTest() { create(nullptr); }

    void create(std::unique_ptr<WiFiNameAccess> access) {
        monitor.reset();
        ConnectionActivityMonitor::Setup setup{
            .preferences = preferences, .workspaceCenter = center, .clock = clock};
        setup.path.reset(path = new Sending<NetworkPathSource>);
        setup.wifi.reset(wifi = new SendingWiFi);
        setup.bluetooth.reset(bluetooth = new Sending<BluetoothSource>);
        setup.wifiNames = std::move(access);
        monitor = std::make_unique<ConnectionActivityMonitor>(std::move(setup));
    }
    void start() {
        monitor->start([this](const SystemActivity& activity) {
            titles += activity.title() + " " + seconds(activity.timestamp) + ",";
            last = activity;
        });
    }
    /// Starts with these as the starting points.
    void startFrom(const NetworkConnectionState& state) {
        start();
        path->send(state);
        advance(10);
    }
    void advance(double duration) {
        clock.advance(duration);
        test::settle();
    }
    void set(const SwitchKey& key, bool value) {
        preferences.set(key.name, value);
        test::settle();
    }
    /// Radio and one headset.
    void sendHeadset(std::optional<bool> radio, bool connected) const {
        bluetooth->send(
            {.isPoweredOn = radio,
             .paired = std::vector<BluetoothDevice>{{"00-11", "Headset", 4, connected}}});
    }
    static std::string seconds(Date at) {
        return std::to_string(static_cast<int>(at - test::ManualAppClock::start));
    }
    void expectRecorded(const std::string& expected) {
        EXPECT_EQ(titles, expected);
        titles.clear();
    }

    test::ManualAppClock clock;
    test::MemoryPreferences preferences;
    NotificationCenter center;
    Sending<NetworkPathSource>* path = nullptr;
    SendingWiFi* wifi = nullptr;
    Sending<BluetoothSource>* bluetooth = nullptr;
    std::unique_ptr<ConnectionActivityMonitor> monitor;
    std::string titles;
    SystemActivity last;
};

} // namespace

TEST_F(ConnectionActivityMonitorTest, RecordsAPathThatLasts) {
    EXPECT_EQ(*monitor->networkStatus, "Not observing yet");
    start();
    EXPECT_EQ(*monitor->networkStatus, "Establishing a starting point…");
    path->send(ethernet);
    advance(2);
    EXPECT_EQ(*monitor->networkStatus, "Observing connection changes · Ethernet");
    path->send(nothing);
    advance(1);
    path->send(ethernet);
    advance(9);
    expectRecorded("");

    path->send(nothing);
    advance(1.5);
    // Repeated as it is.
    path->send(nothing);
    advance(0.5);
    expectRecorded("Network Connection Unavailable 12,");
    EXPECT_EQ(*monitor->networkStatus, "Observing connection changes · Unavailable");
    monitor->stop();
    EXPECT_FALSE(path->running);
    EXPECT_EQ(*monitor->networkStatus, "Paused");
    EXPECT_EQ(*monitor->bluetoothStatus, "Paused");
}

TEST_F(ConnectionActivityMonitorTest, RecordsNothingFromASourceThatWasStopped) {
    startFrom(ethernet);
    const auto stale = path->send;
    const auto staleLinks = wifi->send;
    const auto staleBluetooth = bluetooth->send;
    sendHeadset(true, false);
    set(preference::networkHistoryEnabled, false);
    set(preference::bluetoothHistoryEnabled, false);
    set(preference::networkHistoryEnabled, true);
    set(preference::bluetoothHistoryEnabled, true);
    path->send(ethernet);
    wifi->sendDown();
    advance(10);
    stale(nothing);
    staleLinks(std::vector<WiFiSource::Link>{{{"wlan0", true}}});
    staleBluetooth({.isPoweredOn = false});
    advance(10);
    expectRecorded("");
}

TEST_F(ConnectionActivityMonitorTest, BeginsAnewWhenSwitchedOnAndAfterSleep) {
    startFrom(ethernet);
    sendHeadset(true, false);
    set(preference::networkHistoryEnabled, false);
    EXPECT_EQ(*monitor->networkStatus, "Off");
    EXPECT_EQ(*monitor->wifiStatus, "Paused");
    EXPECT_FALSE(path->running);
    set(preference::networkHistoryEnabled, true);
    path->send(nothing);
    advance(10);

    // A change that waits is not recorded after the sleep.
    path->send(wifiPath);
    sendHeadset(true, true);
    center.post(notification::willSleep);
    EXPECT_EQ(*monitor->networkStatus, "Paused during sleep");
    EXPECT_EQ(*monitor->bluetoothStatus, "Paused during sleep");
    center.post(notification::didWake);
    advance(4);
    center.post(notification::willSleep);
    advance(10);
    set(preference::networkHistoryEnabled, false);
    set(preference::networkHistoryEnabled, true);
    EXPECT_FALSE(path->running) << "switched on during the sleep";
    center.post(notification::didWake);
    advance(4.9);
    EXPECT_FALSE(path->running || bluetooth->running) << "in the first seconds after the wake";
    advance(0.1);
    EXPECT_TRUE(path->running && bluetooth->running);
    path->send(ethernet);
    sendHeadset(true, false);
    advance(10);
    expectRecorded("");

    center.post(notification::willSleep);
    center.post(notification::sleepAbandoned);
    advance(5);
    EXPECT_TRUE(path->running);
    monitor->stop();
    center.post(notification::willSleep);
    center.post(notification::didWake);
    advance(10);
    EXPECT_FALSE(path->running);
}

TEST_F(ConnectionActivityMonitorTest, RecordsConnectionsOfPairedDevices) {
    start();
    sendHeadset(true, true);
    EXPECT_EQ(*monitor->bluetoothStatus, "Observing supported paired-device connections");
    advance(10);
    sendHeadset(true, false);
    advance(4);
    sendHeadset(true, true);
    advance(10);
    expectRecorded("");

    sendHeadset(true, false);
    advance(5);
    expectRecorded("Headset Disconnected 24,");
    EXPECT_FALSE(last.bluetoothChange->session) << "its start was not observed";
    sendHeadset(true, true);
    advance(11);
    sendHeadset(true, false);
    advance(5);
    expectRecorded("Headset Connected 29,Headset Disconnected 40,");
    EXPECT_EQ(last.bluetoothChange->session->duration(), 11);
}

TEST_F(ConnectionActivityMonitorTest, FollowsNewPairingsFromTheirFirstConnection) {
    start();
    const auto send = [&](std::vector<BluetoothDevice> paired) {
        bluetooth->send({.isPoweredOn = true, .paired = std::move(paired)});
    };
    send({});
    const BluetoothDevice mouse{"A", "Mouse", 5, false};
    const BluetoothDevice connected{"B", "Keyboard", 5, true};
    send({mouse, connected});
    advance(5);
    expectRecorded("Keyboard Connected 0,");
    EXPECT_FALSE(last.bluetoothChange->session);

    // The pairing is removed while its change waits.
    send({mouse, {"B", "Keyboard", 5, false}});
    advance(1);
    send({mouse});
    advance(10);
    expectRecorded("");
}

TEST_F(ConnectionActivityMonitorTest, RecordsTheRadioAndBeginsAnewWhenItIsOn) {
    start();
    sendHeadset(true, true);
    // Devices disconnect just before the radio is off.
    sendHeadset(true, false);
    sendHeadset(false, false);
    EXPECT_EQ(*monitor->bluetoothStatus, "Bluetooth is off · watching for power changes");
    advance(10);
    sendHeadset(true, true);
    advance(10);
    expectRecorded("Bluetooth Turned Off 0,Bluetooth Turned On 10,");

    // While the service restarts.
    bluetooth->send({});
    EXPECT_EQ(*monitor->bluetoothStatus, "Bluetooth is unavailable · history paused");
    sendHeadset(false, false);
    advance(10);
    expectRecorded("");
}

TEST_F(ConnectionActivityMonitorTest, SaysWhatPreventsBluetoothHistory) {
    using Permission = BluetoothSource::Permission;
    const std::vector<BluetoothDevice> none;
    const std::pair<BluetoothSource::State, std::string_view> cases[] = {
        {{Permission::denied, true, none},
         "Bluetooth permission is unavailable. Review Privacy & Security → Bluetooth in System "
         "Settings."},
        {{Permission::unknown, true, none}, "Bluetooth permission status is unavailable."},
        {{Permission::undetermined, true, none}, "Waiting for Bluetooth permission…"},
        {{Permission::granted, true, std::nullopt},
         "The paired-device list is unavailable. No connection history is being recorded."},
        {{Permission::granted, true, none, false},
         "Bluetooth connection notifications are unavailable."},
    };
    start();
    for (const auto& [state, status] : cases) {
        sendHeadset(true, true);
        bluetooth->send(state);
        EXPECT_EQ(*monitor->bluetoothStatus, status);
        // Afterwards begins anew.
        sendHeadset(true, false);
        advance(10);
        expectRecorded("");
    }
}

TEST_F(ConnectionActivityMonitorTest, RecordsTheWiFiLinkWithoutNamesUnlessTurnedOn) {
    start();
    EXPECT_EQ(*monitor->wifiStatus, "Wi-Fi link observation active");
    wifi->sendNetwork("Home");
    wifi->sendNetwork("Office", 36);
    advance(10);
    wifi->sendDown();
    advance(1);
    wifi->sendNetwork("Home");
    advance(10);
    expectRecorded("");
    wifi->sendDown();
    advance(10);
    expectRecorded("Wi-Fi Disconnected 21,");

    wifi->sendNetwork("Home");
    advance(10);
    set(preference::wifiNetworkNamesEnabled, true);
    EXPECT_EQ(*monitor->wifiDetails().status, "Wi-Fi name access is enabled.");
    wifi->sendNetwork("Home");
    wifi->sendNetwork("Home", 6);
    advance(10);
    expectRecorded("Wi-Fi Connected 31,");
    wifi->sendNetwork("Office");
    advance(10);
    expectRecorded("Wi-Fi Network Changed 51,");
    EXPECT_EQ(last.detailSubtitle(), "Home → Office");
    wifi->send({});
    wifi->sendNetwork("Home");
    advance(10);
    set(preference::wifiNetworkNamesEnabled, false);
    EXPECT_EQ(wifi->names, WiFiSource::Names::omit);
    wifi->sendNetwork("Home");
    advance(10);
    expectRecorded("");

    wifi->works = false;
    set(preference::networkHistoryEnabled, false);
    set(preference::networkHistoryEnabled, true);
    EXPECT_EQ(*monitor->wifiStatus, "Wi-Fi link observation unavailable");
}

TEST_F(ConnectionActivityMonitorTest, ReadsNamesOnlyWithThePermissionOfTheSystem) {
    auto owned = std::make_unique<Access>();
    Access& access = *owned;
    create(std::move(owned));
    start();
    set(preference::wifiNetworkNamesEnabled, true);
    EXPECT_EQ(access.log, "request ");
    EXPECT_EQ(wifi->names, WiFiSource::Names::omit);
    access.granted = WiFiNameAccess::Permission::granted;
    access.changed();
    EXPECT_EQ(wifi->names, WiFiSource::Names::read);
    access.granted = WiFiNameAccess::Permission::denied;
    access.changed();
    EXPECT_EQ(wifi->names, WiFiSource::Names::omit);
    EXPECT_EQ(*monitor->wifiDetails().status,
              "In System Settings → Privacy & Security → Location Services, enable Location "
              "Services and Tidemark.");
    set(preference::wifiNetworkNamesEnabled, false);
    set(preference::wifiNetworkNamesEnabled, true);
    EXPECT_EQ(access.log, "request settings ");
}
