#include "platform/linux/ThermalPressure.h"

#include "core/activity/ThermalState.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

using Kind = ThermalZones::TripKind;

// Indices of ThermalState::names.
constexpr std::size_t nominal = 0;
constexpr std::size_t serious = 2;

constexpr double leastHysteresis = 5;
constexpr double nearCritical = 5;

std::size_t levelOf(Kind kind) {
    switch (kind) {
    case Kind::active:
        return 1;
    case Kind::passive:
        return serious;
    case Kind::hot:
    case Kind::critical:
        return 3;
    }
    return nominal;
}

/// The temperature from which a trip counts.
double thresholdOf(const ThermalZones::Trip& trip) {
    return trip.kind == Kind::critical ? trip.temperature - nearCritical : trip.temperature;
}

} // namespace

void ThermalPressure::noteFirstTemperatures(const ThermalZones& reading) {
    for (const auto& zone : reading.zones)
        temperaturesAtFirst.try_emplace(zone.name, zone.temperature);
}

/// A hot or critical trip that was passed at the first reading is nonsense of the firmware: the
/// machine would have shut down.
bool ThermalPressure::isValid(const ThermalZones::Zone& zone,
                              const ThermalZones::Trip& trip) const {
    if (trip.kind != Kind::hot && trip.kind != Kind::critical)
        return true;
    const auto first = temperaturesAtFirst.find(zone.name);
    return first == temperaturesAtFirst.end() || first->second < trip.temperature;
}

/// With `isLeaving`, a trip counts until the temperature is clearly below it.
ThermalPressure::Level ThermalPressure::levelOf(const ThermalZones& reading, bool isSlowedDown,
                                                bool isLeaving) const {
    Level level = isSlowedDown ? serious : nominal;
    for (const auto& zone : reading.zones)
        for (const auto& trip : zone.trips) {
            const double margin = isLeaving ? std::max(trip.hysteresis, leastHysteresis) : 0;
            if (isValid(zone, trip) && zone.temperature >= thresholdOf(trip) - margin)
                level = std::max(level, tidemark::levelOf(trip.kind));
        }
    return level;
}

void ThermalPressure::receive(const ThermalZones& reading, bool isTooHot, double now) {
    noteFirstTemperatures(reading);
    const bool isThrottled = reading.throttled > lastThrottled.value_or(reading.throttled);
    lastThrottled = reading.throttled;
    if (reading.zones.empty()) {
        current.reset();
        rising.reset();
        falling.reset();
        return;
    }
    const bool isSlowedDown = reading.isSlowedDown || isThrottled || isTooHot;
    const Level level = levelOf(reading, isSlowedDown, false);
    if (!current) {
        current = level;
        return;
    }
    if (level <= *current)
        rising.reset();
    else if (!rising)
        rising = Pending{now, level};
    else
        rising->level = std::min(rising->level, level);

    const Level held = levelOf(reading, isSlowedDown, true);
    if (held >= *current)
        falling.reset();
    else if (!falling)
        falling = Pending{now, held};
    else
        falling->level = std::max(falling->level, held);

    if (rising && now - rising->since >= riseTime)
        current = std::exchange(rising, std::nullopt)->level;
    else if (falling && now - falling->since >= fallTime)
        current = std::exchange(falling, std::nullopt)->level;
}

std::optional<std::string_view> ThermalPressure::state() const {
    return current ? std::optional(ThermalState::names[*current]) : std::nullopt;
}

} // namespace tidemark
