#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

/// A paired device as the system tells of it.
struct BluetoothDevice {
    std::string address;
    std::string name;
    /// The major device class of the Bluetooth Assigned Numbers (2.8, Class of Device).
    std::uint32_t majorClass = 0;
    bool connected = false;

    /// The major class within a whole class of device, of which it is bits 8 to 12.
    static constexpr std::uint32_t majorClassOf(std::uint32_t classOfDevice) {
        return classOfDevice >> 8 & 0x1f;
    }

    /// The name without white space around it, of at most 120 characters; "Bluetooth Device" for
    /// one that has none.
    std::string displayName() const;
    /// What the major class is called; absent for one that says nothing to people.
    std::optional<std::string> className() const;
};

} // namespace tidemark
