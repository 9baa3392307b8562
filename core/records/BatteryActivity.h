#pragma once

#include "core/base/Date.h"
#include "core/base/JsonFields.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tidemark {

/// One reading of the power source and the internal battery.
struct BatteryObservation {
    bool externalPower = false;
    /// 0 to 100.
    std::optional<std::int64_t> percentage;
    std::optional<bool> charging;
    std::optional<bool> fullyCharged;

    bool operator==(const BatteryObservation&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"externalPower", &BatteryObservation::externalPower},
            Field{"percentage", &BatteryObservation::percentage},
            Field{"charging", &BatteryObservation::charging},
            Field{"fullyCharged", &BatteryObservation::fullyCharged},
        };
    }
};

/// An interval between two observations, such as a sleep or a charge.
struct ObservedSession {
    Date startedAt;
    Date endedAt;
    std::optional<BatteryObservation> initialBattery;
    std::optional<BatteryObservation> finalBattery;

    double duration() const { return endedAt - startedAt; }
    /// Whole minutes in words: "Under a minute", "7 min", "2 hr 5 min".
    std::string durationLabel() const;

    bool operator==(const ObservedSession&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"startedAt", &ObservedSession::startedAt},
            Field{"endedAt", &ObservedSession::endedAt},
            Field{"initialBattery", &ObservedSession::initialBattery},
            Field{"finalBattery", &ObservedSession::finalBattery},
        };
    }
};

/// A change of the power source or the internal battery.
struct BatteryActivity {
    enum class Kind { powerConnected, switchedToBattery, fullyCharged, low };

    Kind kind = Kind::powerConnected;
    std::optional<BatteryObservation> before;
    std::optional<ObservedSession> session;
    BatteryObservation observation;

    std::string_view title() const;

    bool operator==(const BatteryActivity&) const = default;
    static constexpr auto fields() {
        return std::tuple{
            Field{"kind", &BatteryActivity::kind},
            Field{"before", &BatteryActivity::before},
            Field{"session", &BatteryActivity::session},
            Field{"observation", &BatteryActivity::observation},
        };
    }
};

template <>
inline constexpr auto json::rawValues<BatteryActivity::Kind> =
    std::to_array<json::RawValue<BatteryActivity::Kind>>({
        {BatteryActivity::Kind::powerConnected, "powerConnected"},
        {BatteryActivity::Kind::switchedToBattery, "switchedToBattery"},
        {BatteryActivity::Kind::fullyCharged, "fullyCharged"},
        {BatteryActivity::Kind::low, "low"},
    });

} // namespace tidemark
