#pragma once

#include "core/base/PropertyList.h"
#include "core/records/BatteryActivity.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Reading the internal battery out of what a system tells of its power sources. What is no
/// readable internal battery, such as that of a mouse, gives nothing.
namespace tidemark::PowerSource {

/// Reads one description with the keys of IOKit (IOPSKeys.h): "Type", "Is Present", "Power Source
/// State", "Current Capacity", "Max Capacity", "Is Charged", "Is Charging". A value of another
/// type counts as missing.
std::optional<BatteryObservation> parse(const PropertyList::Dictionary& description);

/// The first of several sources that can be read.
std::optional<BatteryObservation>
firstBattery(const std::vector<PropertyList::Dictionary>& descriptions);

/// Properties of org.freedesktop.UPower.Device by their names there; absent when the service
/// does not tell them. `onBattery` is that of org.freedesktop.UPower itself.
struct UPowerDevice {
    std::optional<std::uint32_t> type;
    std::optional<bool> powerSupply;
    std::optional<bool> isPresent;
    /// 0 to 100.
    std::optional<double> percentage;
    std::optional<std::uint32_t> state;
    std::optional<bool> onBattery;
};

std::optional<BatteryObservation> parse(const UPowerDevice& device);

} // namespace tidemark::PowerSource
