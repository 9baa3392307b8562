#pragma once

#include "core/activity/BluetoothDevice.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Follows the Bluetooth radio and the paired devices. It neither searches for devices nor pairs
/// them, and does not turn the radio on. Main thread only.
class BluetoothSource {
public:
    enum class Permission { undetermined, denied, unknown, granted };

    struct State {
        Permission permission = Permission::granted;
        /// Absent when the radio's state is not known or there is no radio.
        std::optional<bool> isPoweredOn{};
        /// Absent when they can't be listed.
        std::optional<std::vector<BluetoothDevice>> paired{};
        /// False when connections of paired devices are not reported.
        bool reportsConnections = true;

        bool operator==(const State&) const = default;
    };
    using Receive = std::function<void(const State& state)>;

    virtual ~BluetoothSource() = default;

    /// Starts to follow: calls `receive` from the event loop with the present state as soon as
    /// anything is known about it, and again after changes. A call may pass a state that equals the
    /// one before. `receive` must not destroy the source.
    virtual void start(Receive receive) = 0;
    virtual void stop() = 0;

    /// Why this machine has no Bluetooth, as a sentence; absent when it has, and while that is not
    /// known. Can be asked at any time.
    virtual std::optional<std::string> absence() const = 0;
};

} // namespace tidemark
