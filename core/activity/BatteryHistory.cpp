#include "core/activity/BatteryHistory.h"

namespace tidemark {

namespace {

/// The battery is low below this level, in percent.
constexpr std::int64_t lowBelow = 20;
/// A low battery is recorded again after this level was reached on external power.
constexpr std::int64_t recoveredFrom = 25;
/// A full battery is recorded again after the level was below this.
constexpr std::int64_t fullAgainBelow = 95;

// Comparing the optional itself would treat an unknown level as below every bound.
bool isBelow(const BatteryObservation& battery, std::int64_t bound) {
    return battery.percentage && *battery.percentage < bound;
}

bool isAtLeast(const BatteryObservation& battery, std::int64_t bound) {
    return battery.percentage && *battery.percentage >= bound;
}

} // namespace

bool BatteryHistory::receive(std::optional<BatteryObservation> observation, Date at) {
    if (sample == observation)
        return false;
    if (!observation) {
        reset();
        return true;
    }
    if (!sample) {
        tracker = SettledTransition(delay, observation);
        lowRecorded = isBelow(*observation, lowBelow);
        fullRecorded = observation->fullyCharged == true;
    }
    sample = observation;
    tracker.receive(*observation, at);
    return true;
}

std::vector<SystemActivity> BatteryHistory::settle(Date at) {
    const auto settled = tracker.settle(at);
    if (!settled)
        return {};
    const auto session = sessionEnding(*settled);
    followCharging(*settled);
    rearm(settled->after);
    std::vector<SystemActivity> records;
    for (const BatteryActivity::Kind kind : kindsToRecord(*settled)) {
        auto& record = records.emplace_back(
            SystemActivity::observed(SystemActivity::Kind::batteryChanged, settled->firstObserved));
        record.batteryActivity.emplace({kind, settled->before, session, settled->after});
    }
    return records;
}

std::optional<ObservedSession> BatteryHistory::sessionEnding(const Transition& settled) const {
    const auto& after = settled.after;
    const bool stillFilling = after.externalPower && after.fullyCharged != true;
    // The clock may have been set back since the charge began.
    if (!chargingStart || stillFilling || settled.firstObserved < chargingStart->began)
        return std::nullopt;
    return ObservedSession{chargingStart->began, settled.firstObserved, chargingStart->battery,
                           after};
}

void BatteryHistory::followCharging(const Transition& settled) {
    const auto& [before, after, firstObserved] = settled;
    if (after.charging != true || !after.externalPower) {
        chargingStart.reset();
        return;
    }
    // A charge whose start was not observed has no session.
    const bool alreadyCharging = before.externalPower && before.charging != false;
    if (!alreadyCharging)
        chargingStart = Charge{firstObserved, after};
}

void BatteryHistory::rearm(const BatteryObservation& after) {
    if (after.externalPower && isAtLeast(after, recoveredFrom))
        lowRecorded = false;
    if (isBelow(after, fullAgainBelow))
        fullRecorded = false;
}

std::vector<BatteryActivity::Kind> BatteryHistory::kindsToRecord(const Transition& settled) {
    using Kind = BatteryActivity::Kind;
    const auto& before = settled.before;
    const auto& after = settled.after;
    std::vector<Kind> kinds;
    if (before.externalPower != after.externalPower)
        kinds.push_back(after.externalPower ? Kind::powerConnected : Kind::switchedToBattery);
    if (after.externalPower) {
        const bool filled = before.fullyCharged == false && after.fullyCharged == true;
        if (filled && !fullRecorded) {
            kinds.push_back(Kind::fullyCharged);
            fullRecorded = true;
        }
    } else if (isAtLeast(before, lowBelow) && isBelow(after, lowBelow) && !lowRecorded) {
        kinds.push_back(Kind::low);
        lowRecorded = true;
    }
    return kinds;
}

} // namespace tidemark
