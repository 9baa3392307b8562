#include "app/monitors/PowerActivityMonitor.h"

#include "app/base/Background.h"

namespace tidemark {

PowerActivityMonitor::PowerActivityMonitor(std::filesystem::path url, NotificationCenter& center,
                                           AppClock& clock, Callbacks callbacks)
    : notifications(center), time(clock), calls(std::move(callbacks)), store(std::move(url)) {
    thread.setMaxThreadCount(1);
}

PowerActivityMonitor::~PowerActivityMonitor() {
    stop();
    tasks.drain();
}

template <class Work>
QCoro::Task<std::vector<SystemActivity>> PowerActivityMonitor::onFile(Work work) {
    const auto access = [this, work = std::move(work)](const std::stop_token&) {
        work(store);
        return store.records();
    };
    auto records = co_await runInBackground(access, {}, WorkPriority::userInitiated, &thread);
    co_return records;
}

QCoro::Task<bool> PowerActivityMonitor::start() {
    const auto hold = tasks.hold();
    if (isStarted() || tasks.isStopping())
        co_return false;
    phase = Phase::opening;
    const auto number = ++generation;
    std::exception_ptr failure;
    std::vector<SystemActivity> records;
    try {
        const auto load = [](SystemActivityStore& file) { file.load(); };
        records = co_await onFile(load);
    } catch (...) {
        failure = std::current_exception();
    }
    if (number != generation)
        co_return false;
    phase = failure ? Phase::stopped : Phase::following;
    if (failure)
        std::rethrow_exception(failure);
    known = std::move(records);
    follow(notification::willSleep, SystemActivity::Kind::sleepRequested);
    follow(notification::didWake, SystemActivity::Kind::woke);
    co_return true;
}

void PowerActivityMonitor::follow(Notification notification, SystemActivity::Kind kind) {
    tokens.push_back(notifications.observe(notification, [this, kind] {
        if (calls.collectionAllowed())
            record(sleepHistory.receive(kind, time.now(), calls.battery()));
    }));
}

void PowerActivityMonitor::stop() {
    ++generation;
    phase = Phase::stopped;
    sleepHistory.reset();
    tokens.clear();
}

void PowerActivityMonitor::record(SystemActivity activity) {
    if (phase == Phase::following && calls.collectionAllowed())
        tasks.start(append(std::move(activity)));
}

QCoro::Task<void> PowerActivityMonitor::append(SystemActivity activity) {
    const auto write = [added = std::move(activity)](SystemActivityStore& file) {
        file.append(added);
    };
    try {
        known = co_await onFile(write);
    } catch (const std::exception& error) {
        calls.didFail(error);
        co_return;
    }
    calls.didRecord(known);
}

} // namespace tidemark
