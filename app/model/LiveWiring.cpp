#include "app/model/LiveWiring.h"

namespace tidemark {

LiveWiring::LiveWiring(Setup setup)
    : time(setup.clock), monitors(setup.monitors),
      power(setup.activityURL, setup.workspaceCenter, setup.clock, callbacks(setup)) {}

LiveWiring::~LiveWiring() {
    // A file that is still being read must not start the monitors.
    LiveWiring::stop();
}

PowerActivityMonitor::Callbacks LiveWiring::callbacks(const Setup& setup) {
    return {
        .collectionAllowed = [this] { return canRecord(); },
        .didRecord = [this](const auto& records) { showActivity(records); },
        .didFail =
            [this](const auto&) {
                showActivityError("Activity history could not be saved. Activity history may be "
                                  "incomplete.");
            },
        .battery = setup.battery,
    };
}

QCoro::Task<void> LiveWiring::loadMemory() {
    co_return;
}

void LiveWiring::startActivityMonitors() {
    if (canRecord() && !power.isStarted())
        tasks.start(openActivity());
}

QCoro::Task<void> LiveWiring::openActivity() {
    bool isFollowing = false;
    try {
        isFollowing = co_await power.start();
    } catch (const std::exception&) {
        showActivityError("Activity history couldn’t be opened. The existing file has not been "
                          "replaced.");
    }
    if (!isFollowing)
        co_return;
    if (state)
        state->setSystemActivity(power.records());
    for (ActivityMonitor* monitor : monitors)
        monitor->start([to = QPointer(&power)](SystemActivity activity) {
            if (to)
                to->record(std::move(activity));
        });
}

void LiveWiring::showActivity(const std::vector<SystemActivity>& records) {
    if (!state)
        return;
    state->observationNow = time.now();
    state->setSystemActivity(records);
}

void LiveWiring::showActivityError(const char* sentence) {
    if (state)
        state->activityError = sentence;
}

void LiveWiring::stop() {
    for (ActivityMonitor* monitor : monitors)
        monitor->stop();
    power.stop();
}

} // namespace tidemark
