#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tidemark {

/// A paired device as the system reports it.
struct BluetoothDevice {
    std::string address;
    std::string name;
    /// The major device class of the Bluetooth Assigned Numbers (2.8, Class of Device).
    std::uint32_t majorClass = 0;
    bool connected = false;

    /// The major class in a whole class of device: its bits 8 to 12.
    static constexpr std::uint32_t majorClassOf(std::uint32_t classOfDevice) {
        return classOfDevice >> 8 & 0x1f;
    }

    /// The name, trimmed and cut to 120 characters; "Bluetooth Device" when there is none.
    std::string displayName() const;
    /// The name of the major class; absent for classes without a useful name.
    std::optional<std::string> className() const;

    bool operator==(const BluetoothDevice&) const = default;
};

} // namespace tidemark
