#include "app/monitors/EnvironmentActivityMonitor.h"

#include "core/activity/ThermalState.h"

#include <utility>

namespace tidemark {

EnvironmentActivityMonitor::EnvironmentActivityMonitor(const Surroundings& surroundings,
                                                       Sources given)
    : SwitchedMonitor(surroundings, {.name = "Environment",
                                     .source = SettingSource::environment,
                                     .setting = preference::environmentHistoryEnabled}),
      sources(std::move(given)), volumeReader(sources.volumeReading, clock()) {}

EnvironmentActivityMonitor::~EnvironmentActivityMonitor() {
    volumeReader.end();
    end();
}

void EnvironmentActivityMonitor::follow(Beginning beginning) {
    status = "Observing drives, displays, and thermal pressure";
    volumes = sources.volumes([this] { schedule(); });
    displays = sources.displays([this] { schedule(); });
    thermal = sources.thermal([this] { schedule(); });
    if (beginning == Beginning::start)
        observe();
    else
        schedule();
}

void EnvironmentActivityMonitor::pause() {
    cancel();
    history.reset();
    // Last, because their ends may run the event loop, and with it the other functions here.
    const auto endingVolumes = std::move(volumes);
    const auto endingDisplays = std::move(displays);
    const auto endingThermal = std::move(thermal);
}

void EnvironmentActivityMonitor::cancel() {
    ++generation;
    settling.stop();
    running.request_stop();
}

void EnvironmentActivityMonitor::schedule() {
    cancel();
    if (isFollowing())
        settling.start(clock().now(), EnvironmentHistory::delay, [this](Date) { observe(); });
}

void EnvironmentActivityMonitor::observe() {
    if (!isFollowing())
        return;
    running.request_stop();
    running = std::stop_source();
    tasks.start(finish(read(), ++generation, running.get_token()));
}

EnvironmentActivityMonitor::Reading EnvironmentActivityMonitor::read() const {
    const auto shown = displays ? displays->displays() : std::nullopt;
    const auto state = thermal ? thermal->state() : std::nullopt;
    Reading reading{.at = clock().now(),
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
    if (number != generation || !isFollowing())
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
