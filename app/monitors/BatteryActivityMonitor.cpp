#include "app/monitors/BatteryActivityMonitor.h"

#include "app/preferences/FollowSettings.h"

#include <utility>

namespace tidemark {

BatteryActivityMonitor::BatteryActivityMonitor(Setup given) : setup(std::move(given)) {
    followSettings(
        setup.preferences, this, [this] { applySetting(); }, preference::batteryHistoryEnabled);
}

BatteryActivityMonitor::~BatteryActivityMonitor() {
    BatteryActivityMonitor::stop();
    tasks.drain();
}

void BatteryActivityMonitor::start(Record to) {
    if (record)
        return;
    record = std::move(to);
    sleeping = false;
    const auto on = [this](Notification notification, auto&& handle) {
        tokens.push_back(setup.workspaceCenter.observe(notification, handle));
    };
    on(notification::willSleep, [this] { sleep(); });
    on(notification::didWake, [this] { wake(); });
    on(notification::sleepAbandoned, [this] { wake(); });
    applySetting();
}

void BatteryActivityMonitor::stop() {
    tokens.clear();
    record = {};
    unsubscribe();
    endWaits();
}

std::optional<std::string> BatteryActivityMonitor::absence() const {
    // The setting has an effect where only the mode is known.
    const bool hasMode = lowPowerMode && lowPowerMode->isOn();
    return battery && !hasMode ? battery->absence() : std::nullopt;
}

bool BatteryActivityMonitor::isEnabled() const {
    return read(setup.preferences, preference::batteryHistoryEnabled);
}

bool BatteryActivityMonitor::isWanted() const {
    return record && isEnabled() && !sleeping;
}

QCoro::Task<std::optional<BatteryObservation>> BatteryActivityMonitor::reading() {
    const auto hold = tasks.hold();
    if (!record || !isEnabled())
        co_return std::nullopt;
    const bool isKnown = battery && battery->state() != BatterySource::State::unknown;
    if (!isKnown)
        co_await setup.clock.sleep(mostWait, waitingForReading.get_token());
    co_return battery ? battery->reading() : std::nullopt;
}

void BatteryActivityMonitor::endWaits() {
    std::exchange(waitingForReading, {}).request_stop();
}

void BatteryActivityMonitor::applySetting() {
    unsubscribe();
    if (isWanted())
        return subscribe();
    if (isEnabled())
        return;
    status = std::string(off);
    endWaits();
}

void BatteryActivityMonitor::subscribe() {
    status = std::string(notYet);
    lowPowerMode = setup.lowPowerMode([this] { observeLowPowerMode(); });
    battery = setup.battery([this] { observe(); });
    observe();
}

void BatteryActivityMonitor::unsubscribe() {
    settling.stop();
    history.reset();
    lowPowerHistory.reset();
    // Last, because their ends may run the event loop, and with it the other functions here.
    const auto endingBattery = std::move(battery);
    const auto endingMode = std::move(lowPowerMode);
}

void BatteryActivityMonitor::sleep() {
    sleeping = true;
    unsubscribe();
}

void BatteryActivityMonitor::wake() {
    sleeping = false;
    applySetting();
}

void BatteryActivityMonitor::observe() {
    if (!isWanted())
        return;
    observeLowPowerMode();
    const auto state = battery ? battery->state() : BatterySource::State::unavailable;
    const auto reading = battery ? battery->reading() : std::nullopt;
    if (state == BatterySource::State::following)
        status = std::string(reading ? observing : noBattery);
    else
        status = std::string(state == BatterySource::State::unknown ? notYet : unavailable);
    if (state != BatterySource::State::unknown)
        endWaits();
    const Date now = setup.clock.now();
    if (!history.receive(reading, now))
        return;
    settling.stop();
    if (reading)
        settling.start(now, BatteryHistory::delay, [this](Date at) { settle(at); });
}

void BatteryActivityMonitor::settle(Date at) {
    if (!isWanted())
        return;
    for (auto& activity : history.settle(at))
        record(std::move(activity));
}

void BatteryActivityMonitor::observeLowPowerMode() {
    if (!isWanted())
        return;
    const auto isOn = lowPowerMode ? lowPowerMode->isOn() : std::nullopt;
    if (!isOn) {
        lowPowerHistory.reset();
        return;
    }
    auto activity = lowPowerHistory.receive(*isOn, setup.clock.now());
    if (!activity)
        return;
    if (battery)
        activity->powerObservation = battery->reading();
    record(*std::move(activity));
}

} // namespace tidemark
