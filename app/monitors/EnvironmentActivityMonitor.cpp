#include "app/monitors/EnvironmentActivityMonitor.h"

#include <utility>

namespace tidemark {

namespace {

/// What is observed, and what this machine does not report. Drives are known everywhere.
std::string statusOf(const EnvironmentHistory::State& state) {
    if (state.displays && state.thermal)
        return "Observing drives, displays, and thermal pressure";
    if (state.displays)
        return "Observing drives and displays · thermal pressure is not reported here";
    if (state.thermal)
        return "Observing drives and thermal pressure · displays are not reported here";
    return "Observing drives · displays and thermal pressure are not reported here";
}

} // namespace

EnvironmentActivityMonitor::EnvironmentActivityMonitor(const Surroundings& surroundings,
                                                       Sources given)
    : SwitchedMonitor(surroundings, {.name = "Environment",
                                     .source = SettingSource::environment,
                                     .setting = preferenceKeys::environmentHistoryEnabled}),
      sources(std::move(given)), volumeReader(sources.volumeReading, clock()) {}

EnvironmentActivityMonitor::~EnvironmentActivityMonitor() {
    volumeReader.end();
    end();
}

void EnvironmentActivityMonitor::follow(Beginning beginning) {
    status = std::string(notYet);
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
    // Last, because destroying a source may run the event loop, which may call the other functions
    // of this monitor.
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
    tasks.start(finish(read(), clock().now(), ++generation, running.get_token()));
}

EnvironmentHistory::State EnvironmentActivityMonitor::read() const {
    EnvironmentHistory::State state;
    if (const auto shown = displays->displays()) {
        state.displays.emplace();
        for (const auto& [key, name, mode] : *shown)
            state.displays->emplace(key, displayEntry(name, mode));
    }
    if (const auto pressure = thermal->state())
        state.thermal = std::string(*pressure);
    return state;
}

QCoro::Task<void> EnvironmentActivityMonitor::finish(EnvironmentHistory::State state, Date at,
                                                     std::uint64_t number, std::stop_token stop) {
    const auto hold = tasks.hold();
    auto mounted = co_await volumeReader.read(std::move(stop));
    if (number != generation || !isFollowing())
        co_return;
    if (!mounted) {
        status = "The drives can’t be listed · history paused";
        co_return history.reset();
    }
    // GCC 12 warns of the assignment without a variable.
    const std::string observed = statusOf(state);
    status = observed;
    state.volumes = *std::move(mounted);
    for (auto& activity : history.receive(std::move(state), at))
        record(std::move(activity));
}

} // namespace tidemark
