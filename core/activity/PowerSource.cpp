#include "core/activity/PowerSource.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

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

/// The level of all batteries together. For several whose energies are all known it is computed
/// from these, otherwise it is the mean of the levels.
std::optional<std::int64_t> percentageOf(const std::vector<UPowerDevice>& batteries) {
    double energy = 0;
    double energyFull = 0;
    double levels = 0;
    bool hasEnergies = batteries.size() > 1;
    for (const auto& battery : batteries) {
        const double now = battery.energy.value_or(0);
        const double full = battery.energyFull.value_or(0);
        hasEnergies = hasEnergies && now > 0 && full > 0 && std::isfinite(now + full);
        energy += now;
        energyFull += full;
        levels += battery.percentage.value_or(std::numeric_limits<double>::quiet_NaN());
    }
    // A battery may hold more than the capacity that it reports.
    if (hasEnergies)
        return wholePercentage(std::min(energy * 100 / energyFull, 100.0));
    return wholePercentage(levels / static_cast<double>(batteries.size()));
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

bool isInternal(const UPowerDevice& device) {
    return device.type == batteryType && device.powerSupply == true && device.isPresent == true;
}

std::optional<BatteryObservation> combined(const std::vector<UPowerDevice>& devices,
                                           std::optional<bool> onBattery) {
    std::vector<UPowerDevice> batteries;
    std::ranges::copy_if(devices, std::back_inserter(batteries), isInternal);
    if (batteries.empty() || !onBattery)
        return std::nullopt;
    BatteryObservation reading{!*onBattery, percentageOf(batteries), {}, {}};
    const auto isIn = [](std::uint32_t state) {
        return [state](const UPowerDevice& battery) { return battery.state == state; };
    };
    const bool allKnown = std::ranges::all_of(batteries, [](const UPowerDevice& battery) {
        return battery.state.value_or(unknownState) != unknownState;
    });
    if (std::ranges::any_of(batteries, isIn(chargingState)))
        reading.charging = true;
    else if (allKnown)
        reading.charging = false;
    if (allKnown)
        reading.fullyCharged = std::ranges::all_of(batteries, isIn(fullState));
    return reading;
}

} // namespace tidemark::PowerSource
