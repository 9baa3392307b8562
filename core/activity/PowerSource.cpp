#include "core/activity/PowerSource.h"

#include <cmath>

namespace tidemark::PowerSource {

namespace {

// Values of UpDeviceKind and UpDeviceState, documented with org.freedesktop.UPower.Device.
constexpr std::uint32_t batteryType = 2;
constexpr std::uint32_t unknownState = 0;
constexpr std::uint32_t chargingState = 1;
constexpr std::uint32_t fullState = 4;

template <class T>
std::optional<T> valueOf(const PropertyList::Dictionary& dictionary, std::string_view key) {
    const T* value = PropertyList::find<T>(dictionary, key);
    return value ? std::optional(*value) : std::nullopt;
}

std::optional<double> numberOf(const PropertyList::Dictionary& dictionary, std::string_view key) {
    if (const auto whole = valueOf<std::int64_t>(dictionary, key))
        return static_cast<double>(*whole);
    return valueOf<double>(dictionary, key);
}

std::optional<std::int64_t> wholePercentage(double percentage) {
    // NaN fails both comparisons.
    if (!(percentage >= 0 && percentage <= 100))
        return std::nullopt;
    return static_cast<std::int64_t>(std::floor(percentage));
}

std::optional<std::int64_t> percentageOf(const PropertyList::Dictionary& description) {
    const auto current = numberOf(description, "Current Capacity");
    const auto maximum = numberOf(description, "Max Capacity");
    if (!current || !maximum || !std::isfinite(*maximum) || !(*maximum > 0))
        return std::nullopt;
    // Multiply first: 29 / 100 * 100 is below 29 in binary floating point.
    return wholePercentage(*current * 100 / *maximum);
}

/// Full means that the system reports it as charged and the percentage is 100.
std::optional<bool> fullyCharged(std::optional<bool> charged,
                                 std::optional<std::int64_t> percentage) {
    if (!charged || !percentage)
        return std::nullopt;
    return *charged && *percentage == 100;
}

} // namespace

std::optional<BatteryObservation> parse(const PropertyList::Dictionary& description) {
    if (valueOf<std::string>(description, "Type") != "InternalBattery")
        return std::nullopt;
    if (valueOf<bool>(description, "Is Present") != true)
        return std::nullopt;
    const auto source = valueOf<std::string>(description, "Power Source State");
    if (source != "AC Power" && source != "Battery Power")
        return std::nullopt;
    const auto percentage = percentageOf(description);
    return BatteryObservation{source == "AC Power", percentage,
                              valueOf<bool>(description, "Is Charging"),
                              fullyCharged(valueOf<bool>(description, "Is Charged"), percentage)};
}

std::optional<BatteryObservation>
firstBattery(const std::vector<PropertyList::Dictionary>& descriptions) {
    for (const auto& description : descriptions)
        if (const auto battery = parse(description))
            return battery;
    return std::nullopt;
}

std::optional<BatteryObservation> parse(const UPowerDevice& device) {
    // The battery of a keyboard or a phone has another type or is not a power supply.
    if (device.type != batteryType || device.powerSupply != true || device.isPresent != true)
        return std::nullopt;
    if (!device.onBattery)
        return std::nullopt;
    const auto percentage = device.percentage ? wholePercentage(*device.percentage) : std::nullopt;
    BatteryObservation battery{!*device.onBattery, percentage, {}, {}};
    if (device.state.value_or(unknownState) != unknownState) {
        battery.charging = device.state == chargingState;
        battery.fullyCharged = fullyCharged(device.state == fullState, percentage);
    }
    return battery;
}

} // namespace tidemark::PowerSource
