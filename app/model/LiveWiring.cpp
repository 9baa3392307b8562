#include "app/model/LiveWiring.h"

namespace tidemark {

namespace {

constexpr std::string_view notOpened =
    "Activity history couldn’t be opened. The existing file has not been replaced.";
constexpr std::string_view notSaved =
    "Activity history could not be saved. Activity history may be incomplete.";

} // namespace

LiveWiring::LiveWiring(Setup setup)
    : state(setup.state), clock(setup.clock), monitors(setup.monitors), memory(setup.memory),
      power(setup.activityURL, setup.workspaceCenter, setup.clock, callbacks(setup), setup.guard) {
    // The status of the recorder depends on the memory history as well.
    QObject::connect(&memory, &MemoryHistoryService::changed, &state, &ModelState::noteChange);
}

LiveWiring::~LiveWiring() {
    // Without this, the monitors would be started when a running read of the file ends.
    LiveWiring::stop();
}

QCoro::Task<void> LiveWiring::writer() {
    co_await power.writer();
    co_await memory.writer();
}

PowerActivityMonitor::Callbacks LiveWiring::callbacks(const Setup& setup) {
    return {
        .collectionAllowed = [this] { return state.canRecord(); },
        .didRecord = [this](auto records) { showActivity(std::move(records)); },
        .didFail = [this](const auto&) { showActivityError(notSaved); },
        .battery = setup.battery,
    };
}

void LiveWiring::startActivityMonitors() {
    if (state.canRecord() && !power.isStarted())
        tasks.start(openActivity());
}

QCoro::Task<void> LiveWiring::openActivity() {
    std::optional<PowerActivityMonitor::Records> records;
    try {
        records = co_await power.start();
    } catch (const std::exception&) {
        showActivityError(notOpened);
    }
    if (!records)
        co_return;
    if (state.activityError->value_or("") == notOpened)
        state.activityError = std::nullopt;
    state.setSystemActivity(*std::move(records));
    for (ActivityMonitor* monitor : monitors)
        monitor->start([to = QPointer(&power)](SystemActivity activity) {
            if (to)
                to->record(std::move(activity));
        });
}

void LiveWiring::showActivity(PowerActivityMonitor::Records records) {
    state.activityError = std::nullopt;
    state.observationNow = clock.now();
    state.setSystemActivity(std::move(records));
}

void LiveWiring::showActivityError(std::string_view sentence) {
    state.activityError = std::string(sentence);
}

void LiveWiring::stop() {
    memory.stop();
    for (ActivityMonitor* monitor : monitors)
        monitor->stop();
    power.stop();
}

} // namespace tidemark
