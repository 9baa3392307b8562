#include "core/activity/BluetoothConnectionHistory.h"

#include <utility>

namespace tidemark {

BluetoothConnectionHistory::Followed
BluetoothConnectionHistory::startingFrom(const BluetoothDevice& device, bool connected) {
    return {SettledTransition<bool>(delay, connected), connected, device.displayName(),
            device.className(), std::nullopt};
}

void BluetoothConnectionHistory::follow(const BluetoothDevice& device) {
    devices.insert_or_assign(device.address, startingFrom(device, device.connected));
}

bool BluetoothConnectionHistory::receive(const BluetoothDevice& device, Date at) {
    // A device that is paired while the recorder runs starts from the opposite state, so that its
    // first connection is recorded.
    auto& followed =
        devices.try_emplace(device.address, startingFrom(device, !device.connected)).first->second;
    followed.name = device.displayName();
    followed.deviceClass = device.className();
    if (followed.sample == device.connected)
        return false;
    followed.sample = device.connected;
    followed.tracker.receive(device.connected, at);
    return true;
}

std::optional<SystemActivity> BluetoothConnectionHistory::settle(const std::string& address,
                                                                 Date at) {
    const auto found = devices.find(address);
    if (found == devices.end())
        return std::nullopt;
    Followed& device = found->second;
    const auto settled = device.tracker.settle(at);
    if (!settled)
        return std::nullopt;
    auto record =
        SystemActivity::observed(SystemActivity::Kind::bluetoothChanged, settled->firstObserved);
    BluetoothConnectionChange change{device.deviceClass, {}, device.name, settled->after};
    if (const auto since = std::exchange(device.connectedSince, std::nullopt))
        change.session = ObservedSession{*since, settled->firstObserved, {}, {}};
    if (settled->after)
        device.connectedSince = settled->firstObserved;
    record.bluetoothChange.emplace(std::move(change));
    return record;
}

std::vector<std::string>
BluetoothConnectionHistory::keepOnly(const std::set<std::string>& addresses) {
    std::vector<std::string> forgotten;
    std::erase_if(devices, [&](const auto& entry) {
        if (addresses.contains(entry.first))
            return false;
        forgotten.push_back(entry.first);
        return true;
    });
    return forgotten;
}

} // namespace tidemark
