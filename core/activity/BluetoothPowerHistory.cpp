#include "core/activity/BluetoothPowerHistory.h"

#include <utility>

namespace tidemark {

std::optional<SystemActivity> BluetoothPowerHistory::receive(std::optional<bool> value, Date at) {
    const auto before = std::exchange(previous, value);
    if (!before || !value || before == value)
        return std::nullopt;
    auto activity = SystemActivity::observed(SystemActivity::Kind::bluetoothPowerChanged, at);
    activity.bluetoothPoweredOn = value;
    return activity;
}

} // namespace tidemark
