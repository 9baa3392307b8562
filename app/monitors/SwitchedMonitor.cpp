#include "app/monitors/SwitchedMonitor.h"

#include "app/preferences/FollowSettings.h"

#include <utility>

namespace tidemark {

SwitchedMonitor::SwitchedMonitor(const Surroundings& surroundings, const Traits& traits)
    : surroundings(surroundings), traits(traits) {
    followSettings(
        surroundings.preferences, this, [this] { update(Beginning::resumption); }, traits.setting);
}

std::vector<MonitorStatus> SwitchedMonitor::statuses() const {
    return {{std::string(traits.name), *status}};
}

void SwitchedMonitor::start(Record to) {
    if (passOn)
        return;
    passOn = std::move(to);
    isAsleep = false;
    const auto on = [this](Notification notification, auto&& handle) {
        tokens.push_back(surroundings.workspaceCenter.observe(notification, handle));
    };
    on(notification::willSleep, [this] { noteSleep(); });
    on(notification::didWake, [this] { noteWake(); });
    // The source of these notifications has ended, so a wake would not be noticed: the machine
    // counts as awake.
    on(notification::sleepAbandoned, [this] { noteWake(); });
    update(Beginning::start);
}

void SwitchedMonitor::stop() {
    tokens.clear();
    wakeTimer.stop();
    if (std::exchange(passOn, nullptr))
        update(Beginning::resumption);
}

void SwitchedMonitor::end() {
    stop();
    tasks.drain();
}

bool SwitchedMonitor::isOn() const {
    return passOn && read(surroundings.preferences, traits.setting);
}

void SwitchedMonitor::record(SystemActivity activity) {
    if (isFollowing() && passOn)
        passOn(std::move(activity));
}

SwitchedMonitor::Phase SwitchedMonitor::phaseWanted() const {
    if (!read(surroundings.preferences, traits.setting))
        return Phase::off;
    if (!passOn)
        return Phase::stopped;
    return isAsleep ? Phase::asleep : Phase::following;
}

void SwitchedMonitor::update(Beginning beginning) {
    const Phase before = std::exchange(phase, phaseWanted());
    if (phase == before)
        return;
    if (phase == Phase::off)
        status = "Off";
    else if (phase == Phase::stopped)
        status = "Paused";
    else if (phase == Phase::asleep)
        status = "Paused during sleep";
    // Last, because destroying an adapter may run the event loop, which may call this function.
    if (before == Phase::following)
        pause();
    else if (phase == Phase::following)
        follow(beginning);
}

void SwitchedMonitor::noteSleep() {
    isAsleep = true;
    wakeTimer.stop();
    update(Beginning::resumption);
}

void SwitchedMonitor::noteWake() {
    // What was known before a sleep that was not announced is outdated as well.
    noteSleep();
    const auto resume = [this] {
        isAsleep = false;
        update(Beginning::resumption);
    };
    if (traits.wakeDelay > 0)
        wakeTimer.start(clock().now(), traits.wakeDelay, [resume](Date) { resume(); });
    else
        resume();
}

} // namespace tidemark
