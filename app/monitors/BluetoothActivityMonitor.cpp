#include "app/monitors/BluetoothActivityMonitor.h"

#include <set>
#include <utility>

namespace tidemark {

namespace {

constexpr std::string_view observing = "Observing supported paired-device connections";

} // namespace

BluetoothActivityMonitor::BluetoothActivityMonitor(const Surroundings& surroundings,
                                                   std::unique_ptr<BluetoothSource> source)
    : SwitchedMonitor(surroundings, {.name = "Bluetooth",
                                     .source = SettingSource::bluetooth,
                                     .setting = preferenceKeys::bluetoothHistoryEnabled,
                                     .wakeDelay = wakeDelay}),
      bluetooth(std::move(source)) {}

BluetoothActivityMonitor::~BluetoothActivityMonitor() {
    end();
}

void BluetoothActivityMonitor::follow(Beginning) {
    status = std::string(notYet);
    bluetooth->start([this, number = ++generation](const BluetoothSource::State& state) {
        if (number == generation)
            receive(state);
    });
}

void BluetoothActivityMonitor::pause() {
    ++generation;
    bluetooth->stop();
    power.reset();
    forgetConnections();
}

std::string_view BluetoothActivityMonitor::obstacle(const BluetoothSource::State& state) {
    using Permission = BluetoothSource::Permission;
    if (state.permission == Permission::denied)
        return "Bluetooth permission is unavailable. Review Privacy & Security → Bluetooth in "
               "System Settings.";
    if (state.permission == Permission::unknown)
        return "Bluetooth permission status is unavailable.";
    if (state.permission == Permission::undetermined)
        return "Waiting for Bluetooth permission…";
    if (!state.isPoweredOn)
        return "Bluetooth is unavailable · history paused";
    if (!*state.isPoweredOn)
        return "Bluetooth is off · watching for power changes";
    if (!state.paired)
        return "The paired-device list is unavailable. No connection history is being recorded.";
    if (!state.reportsConnections)
        return "Bluetooth connection notifications are unavailable.";
    return {};
}

void BluetoothActivityMonitor::receive(const BluetoothSource::State& state) {
    const bool isPermitted = state.permission == BluetoothSource::Permission::granted;
    const auto radio = isPermitted ? state.isPoweredOn : std::nullopt;
    if (auto change = power.receive(radio, clock().now()))
        record(*std::move(change));
    const auto found = obstacle(state);
    status = std::string(found.empty() ? observing : found);
    if (found.empty())
        followDevices(*state.paired);
    else
        forgetConnections();
}

void BluetoothActivityMonitor::followDevices(const std::vector<BluetoothDevice>& paired) {
    const Date now = clock().now();
    std::set<std::string> addresses;
    for (const auto& device : paired)
        addresses.insert(device.address);
    for (const auto& forgotten : connections.keepOnly(addresses))
        timers.erase(forgotten);
    for (const auto& device : paired) {
        // A device that is new in the list and not connected is followed from now. One that is new
        // and connected counts as a connection to record.
        const bool isNewAndApart = !connections.isFollowing(device.address) && !device.connected;
        if (!isFollowingDevices || isNewAndApart)
            connections.follow(device);
        else if (connections.receive(device, now))
            settleLater(device.address, now);
    }
    isFollowingDevices = true;
}

void BluetoothActivityMonitor::settleLater(const std::string& address, Date now) {
    const auto timer = timers.try_emplace(address, clock(), tasks).first;
    timer->second.start(now, BluetoothConnectionHistory::delay, [this, address](Date at) {
        timers.erase(address);
        if (auto change = connections.settle(address, at))
            record(*std::move(change));
    });
}

void BluetoothActivityMonitor::forgetConnections() {
    timers.clear();
    connections.reset();
    isFollowingDevices = false;
}

} // namespace tidemark
