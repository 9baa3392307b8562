#include "app/monitors/PowerActivityMonitor.h"

#include "app/base/Background.h"

namespace tidemark {

PowerActivityMonitor::PowerActivityMonitor(std::filesystem::path url,
                                           NotificationCenter& notifications, AppClock& clock,
                                           Callbacks callbacks, FolderGuard guard)
    : notifications(notifications), clock(clock), callbacks(std::move(callbacks)),
      store(std::move(url), std::move(guard)) {}

PowerActivityMonitor::~PowerActivityMonitor() {
    stop();
    tasks.drain();
}

template <class Work>
QCoro::Task<PowerActivityMonitor::Records> PowerActivityMonitor::onFile(Work work) {
    const auto access = [this, work = std::move(work)](const std::stop_token&) {
        work(store);
        return store.records();
    };
    auto records = co_await runInBackground(access, {}, WorkPriority::userInitiated, &thread);
    co_return records;
}

QCoro::Task<std::optional<PowerActivityMonitor::Records>> PowerActivityMonitor::start() {
    const auto hold = tasks.hold();
    if (isStarted() || tasks.isStopping())
        co_return std::nullopt;
    phase = Phase::opening;
    const auto number = ++generation;
    // Observes before the file is read, so that notifications during the reading are recorded as
    // well.
    follow(notification::willSleep, SystemActivity::Kind::sleepRequested);
    follow(notification::didWake, SystemActivity::Kind::woke);
    tokens.push_back(notifications.observe(notification::sleepAbandoned, [this] {
        finish(std::nullopt);
        sleepHistory.reset();
    }));
    std::exception_ptr failure;
    std::optional<Records> records;
    try {
        const auto load = [](SystemActivityStore& file) { file.load(); };
        records = co_await onFile(load);
    } catch (...) {
        failure = std::current_exception();
    }
    if (number != generation)
        co_return std::nullopt;
    if (failure) {
        stop();
        std::rethrow_exception(failure);
    }
    phase = Phase::following;
    for (auto& activity : std::exchange(early, {}))
        tasks.start(append(std::move(activity)));
    co_return records;
}

QCoro::Task<void> PowerActivityMonitor::writer() {
    const auto hold = tasks.hold();
    finish(std::nullopt);
    // Records that arrive while the file is being read are queued once it has been read, so the
    // queue is awaited a second time for them.
    const int turns = phase == Phase::opening ? 2 : 1;
    for (int turn = 0; turn < turns; ++turn) {
        const auto nothing = [](const std::stop_token&) {};
        co_await runInBackground(nothing, {}, WorkPriority::userInitiated, &thread);
    }
}

void PowerActivityMonitor::follow(Notification notification, SystemActivity::Kind kind) {
    tokens.push_back(notifications.observe(notification, [this, kind] {
        finish(std::nullopt);
        if (!callbacks.collectionAllowed())
            return;
        // The time is taken before the battery is read, because that may take a while.
        observed = Observed{kind, clock.now()};
        tasks.start(readBattery(++batteryReadings));
    }));
}

QCoro::Task<void> PowerActivityMonitor::readBattery(std::uint64_t number) {
    const auto hold = tasks.hold();
    const auto battery = co_await callbacks.battery();
    if (number == batteryReadings)
        finish(battery);
}

void PowerActivityMonitor::finish(std::optional<BatteryObservation> battery) {
    const auto waiting = std::exchange(observed, std::nullopt);
    if (waiting)
        record(sleepHistory.receive(waiting->kind, waiting->at, battery));
}

void PowerActivityMonitor::stop() {
    finish(std::nullopt);
    ++generation;
    phase = Phase::stopped;
    sleepHistory.reset();
    tokens.clear();
    early.clear();
}

void PowerActivityMonitor::record(SystemActivity activity) {
    if (phase == Phase::stopped || !callbacks.collectionAllowed())
        return;
    if (phase == Phase::opening)
        early.push_back(std::move(activity));
    else
        tasks.start(append(std::move(activity)));
}

QCoro::Task<void> PowerActivityMonitor::append(SystemActivity activity) {
    const auto write = [added = std::move(activity)](SystemActivityStore& file) {
        file.append(added);
    };
    Records records;
    try {
        records = co_await onFile(write);
    } catch (const std::exception& error) {
        callbacks.didFail(error);
        co_return;
    }
    callbacks.didRecord(std::move(records));
}

} // namespace tidemark
