#pragma once

#include "core/base/PropertyList.h"
#include "core/records/BatteryActivity.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Reads the internal battery from a system's description of its power sources. The result is
/// absent for other batteries, such as that of a mouse, and for unreadable descriptions.
namespace tidemark::PowerSource {

/// Reads one IOKit description (IOPSKeys.h) by its keys "Type", "Is Present", "Power Source State",
/// "Current Capacity", "Max Capacity", "Is Charged" and "Is Charging". A value of the wrong type
/// counts as missing.
std::optional<BatteryObservation> parse(const PropertyList::Dictionary& description);

/// The first description that `parse` can read.
std::optional<BatteryObservation>
firstBattery(const std::vector<PropertyList::Dictionary>& descriptions);

/// Properties of org.freedesktop.UPower.Device by their names there; absent when the service does
/// not report them.
struct UPowerDevice {
    std::optional<std::uint32_t> type;
    std::optional<bool> powerSupply;
    std::optional<bool> isPresent;
    /// 0 to 100.
    std::optional<double> percentage;
    std::optional<std::uint32_t> state;
    /// Watt hours.
    std::optional<double> energy;
    std::optional<double> energyFull;
};

/// False for the batteries of keyboards, phones and the like, and for one that is not inserted.
bool isInternal(const UPowerDevice& device);

/// Combines all internal batteries into one reading; absent when there is none or `onBattery` is
/// absent. `onBattery` is a property of org.freedesktop.UPower itself. The reading is full when the
/// batteries report that they are, whatever their percentage: an old battery or one with a charge
/// limit is full below 100 percent.
///
/// The display device of UPower combines them as well, but it guesses: with batteries in different
/// states it reports charging though none is, and where there is a UPS it reports the UPS.
std::optional<BatteryObservation> combined(const std::vector<UPowerDevice>& devices,
                                           std::optional<bool> onBattery);

} // namespace tidemark::PowerSource
