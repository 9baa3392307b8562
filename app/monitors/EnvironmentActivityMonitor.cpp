#include "app/monitors/EnvironmentActivityMonitor.h"

#include "app/preferences/FollowSettings.h"
#include "core/activity/ThermalState.h"

#include <utility>

namespace tidemark {

EnvironmentActivityMonitor::EnvironmentActivityMonitor(Setup given)
    : setup(std::move(given)), volumeReader(setup.volumeReading, setup.clock) {
    followSettings(
        setup.preferences, this, [this] { applySetting(); }, preference::environmentHistoryEnabled);
}

EnvironmentActivityMonitor::~EnvironmentActivityMonitor() {
    EnvironmentActivityMonitor::stop();
    volumeReader.end();
    tasks.drain();
}

void EnvironmentActivityMonitor::start(Record to) {
    if (record)
        return;
    record = std::move(to);
    sleeping = false;
    subscribe();
    observe();
    const auto on = [this](Notification notification, auto&& handle) {
        tokens.push_back(setup.workspaceCenter.observe(notification, handle));
    };
    on(notification::willSleep, [this] { sleep(); });
    on(notification::didWake, [this] { wake(); });
    on(notification::sleepAbandoned, [this] { wake(); });
}

void EnvironmentActivityMonitor::stop() {
    tokens.clear();
    record = {};
    unsubscribe();
}

bool EnvironmentActivityMonitor::isEnabled() const {
    return tidemark::read(setup.preferences, preference::environmentHistoryEnabled);
}

bool EnvironmentActivityMonitor::isWanted() const {
    return record && isEnabled() && !sleeping;
}

void EnvironmentActivityMonitor::applySetting() {
    unsubscribe();
    subscribe();
    schedule();
}

void EnvironmentActivityMonitor::subscribe() {
    if (!isWanted())
        return;
    volumes = setup.volumes([this] { schedule(); });
    displays = setup.displays([this] { schedule(); });
    thermal = setup.thermal([this] { schedule(); });
}

void EnvironmentActivityMonitor::unsubscribe() {
    cancel();
    history.reset();
    // Last, because their ends may run the event loop, and with it the other functions here.
    const auto endingVolumes = std::move(volumes);
    const auto endingDisplays = std::move(displays);
    const auto endingThermal = std::move(thermal);
}

void EnvironmentActivityMonitor::sleep() {
    sleeping = true;
    unsubscribe();
}

void EnvironmentActivityMonitor::wake() {
    sleeping = false;
    applySetting();
}

void EnvironmentActivityMonitor::cancel() {
    ++generation;
    settling.stop();
    running.request_stop();
}

void EnvironmentActivityMonitor::schedule() {
    cancel();
    if (isWanted())
        settling.start(setup.clock.now(), EnvironmentHistory::delay, [this](Date) { observe(); });
}

void EnvironmentActivityMonitor::observe() {
    if (!isWanted())
        return;
    running.request_stop();
    running = std::stop_source();
    tasks.start(finish(read(), ++generation, running.get_token()));
}

EnvironmentActivityMonitor::Reading EnvironmentActivityMonitor::read() const {
    const auto shown = displays ? displays->displays() : std::nullopt;
    const auto state = thermal ? thermal->state() : std::nullopt;
    Reading reading{.at = setup.clock.now(),
                    .displays = {},
                    .thermal = std::string(state.value_or(ThermalState::names.front())),
                    .hasDisplays = shown.has_value(),
                    .hasThermal = state.has_value()};
    for (const auto& [key, name, mode] : shown.value_or(std::vector<ObservedDisplay>()))
        reading.displays.emplace(key, displayEntry(name, mode));
    return reading;
}

QCoro::Task<void> EnvironmentActivityMonitor::finish(Reading reading, std::uint64_t number,
                                                     std::stop_token stop) {
    const auto hold = tasks.hold();
    auto mounted = co_await volumeReader.read(std::move(stop));
    if (number != generation || !isWanted())
        co_return;
    if (mounted)
        compare(std::move(reading), *std::move(mounted));
    else
        history.reset();
}

void EnvironmentActivityMonitor::compare(Reading reading, EnvironmentHistory::Entries mounted) {
    // A source that has just begun or ended to know its state has seen no change of the machine.
    const bool hadDisplaysBefore = std::exchange(hadDisplays, reading.hasDisplays);
    const bool hadThermalBefore = std::exchange(hadThermal, reading.hasThermal);
    if (hadDisplaysBefore != hadDisplays || hadThermalBefore != hadThermal)
        history.reset();
    for (auto& activity : history.receive(std::move(mounted), std::move(reading.displays),
                                          std::move(reading.thermal), reading.at))
        record(std::move(activity));
}

} // namespace tidemark
