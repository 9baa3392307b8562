#include "app/monitors/BluetoothActivityMonitor.h"

#include "tests/app/support/MonitorFixture.h"

using namespace tidemark;

namespace {

struct Bluetooth final : BluetoothSource {
    void start(Receive receive) override {
        send = std::move(receive);
        isRunning = true;
    }
    void stop() override { isRunning = false; }
    std::optional<std::string> absence() const override { return std::nullopt; }

    /// Sends a state, also after `stop`: a source that delivers from another thread may do so.
    Receive send;
    bool isRunning = false;
};

struct BluetoothActivityMonitorTest : test::MonitorFixture {
    /// A device, and whether it is connected.
    using Device = std::pair<const char*, bool>;

    void send(std::optional<bool> radio, const std::vector<Device>& devices) const {
        std::vector<BluetoothDevice> paired;
        for (const auto& [name, connected] : devices)
            paired.push_back({name, name, 4, connected});
        bluetooth->send({.isPoweredOn = radio, .paired = std::move(paired)});
    }

    Bluetooth* bluetooth = new Bluetooth;
    BluetoothActivityMonitor monitor{surroundings, std::unique_ptr<BluetoothSource>(bluetooth)};
};

} // namespace

TEST_F(BluetoothActivityMonitorTest, RecordsConnectionsThatLast) {
    struct Step {
        std::optional<bool> radio;
        std::vector<Device> devices;
        double seconds;
        std::string_view recorded;
        /// The length of the last record's session; 0 for none.
        double session = 0;
    };
    const Step steps[] = {
        {true, {{"A", true}}, 10, ""},
        // Disconnected for a moment.
        {true, {{"A", false}}, 4, ""},
        {true, {{"A", true}}, 10, ""},
        // Without a session, since the start of the connection was not observed.
        {true, {{"A", false}}, 5, "A Disconnected 24, "},
        {true, {{"A", true}}, 11, "A Connected 29, "},
        {true, {{"A", false}}, 10, "A Disconnected 40, ", 11},
        // Two more devices are paired: B is not connected, C is.
        {true, {{"A", false}, {"B", false}, {"C", true}}, 10, "C Connected 50, "},
        {true, {{"A", false}, {"B", true}, {"C", true}}, 10, "B Connected 60, "},
        // The pairing is removed while its change waits.
        {true, {{"A", false}, {"B", false}, {"C", true}}, 1, ""},
        {true, {{"A", false}, {"C", true}}, 9, ""},
        // Devices disconnect just before the radio is off.
        {true, {{"A", false}, {"C", false}}, 0, ""},
        {false, {{"A", false}, {"C", false}}, 10, "Bluetooth Turned Off 80, "},
        {true, {{"A", true}, {"C", true}}, 10, "Bluetooth Turned On 90, "},
        // The service restarts, and finds another state.
        {std::nullopt, {}, 0, ""},
        {false, {{"A", true}}, 10, ""},
    };
    start(monitor);
    for (const auto& [radio, devices, seconds, recorded, session] : steps) {
        send(radio, devices);
        advance(seconds);
        EXPECT_EQ(titles(), recorded);
        const auto& change = last.bluetoothChange;
        if (!recorded.empty() && change) {
            EXPECT_EQ(change->session ? change->session->duration() : 0, session) << recorded;
        }
    }
}

TEST_F(BluetoothActivityMonitorTest, DropsPendingAndLateReadingsWhenTurnedOff) {
    start(monitor);
    send(true, {{"A", false}});
    const auto stale = bluetooth->send;
    send(true, {{"A", true}});
    set(preferenceKeys::bluetoothHistoryEnabled, false);
    EXPECT_FALSE(bluetooth->isRunning);
    set(preferenceKeys::bluetoothHistoryEnabled, true);
    stale({.isPoweredOn = true, .paired = std::vector<BluetoothDevice>{}});
    send(false, {});
    stale({.isPoweredOn = true});
    advance(10);
    EXPECT_EQ(titles(), "");

    workspace.post(notification::didWake);
    advance(BluetoothActivityMonitor::wakeDelay - 0.1);
    EXPECT_FALSE(bluetooth->isRunning) << "in the first seconds after a wake";
    advance(0.1);
    EXPECT_TRUE(bluetooth->isRunning);
}

TEST_F(BluetoothActivityMonitorTest, SaysWhatPreventsIt) {
    using Permission = BluetoothSource::Permission;
    const std::vector<BluetoothDevice> none;
    const std::pair<BluetoothSource::State, std::string_view> cases[] = {
        {{Permission::denied, true, none},
         "Bluetooth permission is unavailable. Review Privacy & Security → Bluetooth in System "
         "Settings."},
        {{Permission::unknown, true, none}, "Bluetooth permission status is unavailable."},
        {{Permission::undetermined, true, none}, "Waiting for Bluetooth permission…"},
        {{Permission::granted, std::nullopt, none}, "Bluetooth is unavailable · history paused"},
        {{Permission::granted, true, std::nullopt},
         "The paired-device list is unavailable. No connection history is being recorded."},
        {{Permission::granted, true, none, false},
         "Bluetooth connection notifications are unavailable."},
    };
    start(monitor);
    for (const auto& [state, status] : cases) {
        send(true, {{"A", true}});
        EXPECT_EQ(*monitor.status, "Observing supported paired-device connections");
        bluetooth->send(state);
        EXPECT_EQ(*monitor.status, status);
        // The next reading is a new starting point.
        send(true, {{"A", false}});
        advance(10);
        EXPECT_EQ(titles(), "");
    }
    send(false, {});
    EXPECT_EQ(*monitor.status, "Bluetooth is off · watching for power changes");
}
