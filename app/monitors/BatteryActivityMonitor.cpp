#include "app/monitors/BatteryActivityMonitor.h"

#include <utility>

namespace tidemark {

BatteryActivityMonitor::BatteryActivityMonitor(const Surroundings& surroundings, Sources given)
    : SwitchedMonitor(surroundings, {.name = "Battery",
                                     .source = SettingSource::battery,
                                     .setting = preferenceKeys::batteryHistoryEnabled}),
      sources(std::move(given)) {}

BatteryActivityMonitor::~BatteryActivityMonitor() {
    endWaits();
    end();
}

ActivityMonitor::Absence BatteryActivityMonitor::absence() const {
    // Where only the low power mode is known, the setting has an effect, too.
    const bool hasMode = lowPowerMode && lowPowerMode->isOn();
    return battery && !hasMode ? battery->absence() : std::nullopt;
}

QCoro::Task<std::optional<BatteryObservation>> BatteryActivityMonitor::reading() {
    const auto hold = tasks.hold();
    if (!isOn())
        co_return std::nullopt;
    const bool isKnown = battery && battery->state() != BatterySource::State::unknown;
    if (!isKnown)
        co_await clock().sleep(mostWait, waitingForReading.get_token());
    co_return battery ? battery->reading() : std::nullopt;
}

void BatteryActivityMonitor::endWaits() {
    std::exchange(waitingForReading, {}).request_stop();
}

void BatteryActivityMonitor::follow(Beginning) {
    status = std::string(notYet);
    lowPowerMode = sources.lowPowerMode([this] { observeLowPowerMode(); });
    battery = sources.battery([this] { observe(); });
    observe();
}

void BatteryActivityMonitor::pause() {
    if (!isOn())
        endWaits();
    settling.stop();
    history.reset();
    lowPowerHistory.reset();
    // Last, because destroying a source may run the event loop, which may call the other functions
    // of this monitor.
    const auto endingBattery = std::move(battery);
    const auto endingMode = std::move(lowPowerMode);
}

void BatteryActivityMonitor::observe() {
    if (!isFollowing() || !battery)
        return;
    observeLowPowerMode();
    const auto state = battery->state();
    const auto reading = battery->reading();
    if (state == BatterySource::State::following)
        status = std::string(reading ? observing : noBattery);
    else
        status = std::string(state == BatterySource::State::unknown ? notYet : unavailable);
    if (state != BatterySource::State::unknown)
        endWaits();
    const Date now = clock().now();
    if (!history.receive(reading, now))
        return;
    settling.stop();
    if (reading)
        settling.start(now, BatteryHistory::delay, [this](Date at) { settle(at); });
}

void BatteryActivityMonitor::settle(Date at) {
    for (auto& activity : history.settle(at))
        record(std::move(activity));
}

void BatteryActivityMonitor::observeLowPowerMode() {
    if (!isFollowing() || !lowPowerMode)
        return;
    const auto isOn = lowPowerMode->isOn();
    if (!isOn) {
        lowPowerHistory.reset();
        return;
    }
    auto activity = lowPowerHistory.receive(*isOn, clock().now());
    if (!activity)
        return;
    if (battery)
        activity->powerObservation = battery->reading();
    record(*std::move(activity));
}

} // namespace tidemark
