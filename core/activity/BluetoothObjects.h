#pragma once

#include "core/activity/BluetoothDevice.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Derives the state of Bluetooth from the objects of BlueZ (org.bluez, its doc/adapter-api.txt and
/// doc/device-api.txt). Pure functions.
namespace tidemark::BluetoothObjects {

/// A radio.
struct Adapter {
    std::string path{};
    bool isPowered = false;

    bool operator==(const Adapter&) const = default;
};

/// A device as one adapter sees it. Properties that the service leaves out are absent.
struct Device {
    std::string path{};
    std::string address{};
    std::string alias{};
    bool isPaired = false;
    bool isConnected = false;
    std::optional<std::uint32_t> classOfDevice{};
    std::optional<std::uint16_t> appearance{};

    bool operator==(const Device&) const = default;
};

/// Whether a radio is on; absent without adapters.
std::optional<bool> isPoweredOn(const std::vector<Adapter>& adapters);

/// The paired devices, by address: a device that is paired on two adapters is one device, and is
/// connected if either adapter says so. Devices of an adapter that is gone are left out.
std::vector<BluetoothDevice> pairedDevices(const std::vector<Adapter>& adapters,
                                           const std::vector<Device>& devices);

/// The major device class nearest to an appearance (Bluetooth Assigned Numbers, 2.6); 0 for none.
/// Devices without a class of device have an appearance instead.
std::uint32_t majorClassOf(std::uint16_t appearance);

} // namespace tidemark::BluetoothObjects
