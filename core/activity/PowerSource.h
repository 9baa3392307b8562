#pragma once

#include "core/base/PropertyList.h"
#include "core/records/BatteryActivity.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Reads the internal battery from a system's description of its power sources. Other batteries,
/// such as that of a mouse, and unreadable descriptions give nothing.
namespace tidemark::PowerSource {

/// Reads one IOKit description (IOPSKeys.h) by its keys "Type", "Is Present", "Power Source State",
/// "Current Capacity", "Max Capacity", "Is Charged" and "Is Charging". A value of the wrong type
/// counts as missing.
std::optional<BatteryObservation> parse(const PropertyList::Dictionary& description);

/// The first description that `parse` can read.
std::optional<BatteryObservation>
firstBattery(const std::vector<PropertyList::Dictionary>& descriptions);

/// Properties of org.freedesktop.UPower.Device by their names there; absent when the service does
/// not report them. `onBattery` is a property of org.freedesktop.UPower itself.
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
