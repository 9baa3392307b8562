#include "platform/linux/LogindMonitor.h"

#include "platform/linux/LogindNames.h"

#include <utility>

namespace tidemark {

LogindMonitor::LogindMonitor(const MessageBus& bus, NotificationCenter& center, Settle settle,
                             AppClock& clock)
    : center(center), settle(std::move(settle)), clock(clock) {
    logind.emplace(bus, logindService, [this] { follow(); });
    session.emplace(bus, QStringLiteral("Active"),
                    [this](std::optional<bool> active) { setSessionActive(active); });
}

LogindMonitor::~LogindMonitor() {
    // Settling may run the event loop, and logind must not be followed any more then.
    signalsOfManager.clear();
    session.reset();
    logind.reset();
    tasks.drain();
}

void LogindMonitor::follow() {
    signalsOfManager.clear();
    delayLock = {};
    abandonSleep();
    if (!logind->isThere())
        return;
    subscribe();
    takeDelayLock();
    logind->readProperty(logindPath, logindInterface, QStringLiteral("PreparingForSleep"),
                         [this](const QVariant& value) { setPreparingForSleep(value.toBool()); });
}

void LogindMonitor::subscribe() {
    const auto on = [this](const QString& signal, const BusService::Use& handle) {
        signalsOfManager.push_back(logind->subscribe(logindPath, logindInterface, signal, handle));
    };
    on(QStringLiteral("PrepareForSleep"),
       [this](const auto& signal) { setPreparingForSleep(signal.arguments().value(0).toBool()); });
    on(QStringLiteral("PrepareForShutdown"),
       [this](const auto& signal) { prepareForShutdown(signal.arguments().value(0).toBool()); });
}

void LogindMonitor::setPreparingForSleep(bool preparing) {
    if (std::exchange(isPreparingForSleep, preparing) == preparing)
        return;
    const auto sleep = ++sleeps;
    isReadyToSleep = false;
    center.post(preparing ? notification::willSleep : notification::didWake);
    if (!preparing)
        return takeDelayLock();
    // An observer may run the event loop, and the machine may have woken up meanwhile.
    if (sleep != sleeps)
        return;
    tasks.start(settleForSleep(sleeps));
    tasks.start(limitDelay(sleeps));
}

void LogindMonitor::abandonSleep() {
    if (!std::exchange(isPreparingForSleep, false))
        return;
    ++sleeps;
    isReadyToSleep = false;
    center.post(notification::sleepAbandoned);
}

void LogindMonitor::takeDelayLock() {
    logind->call(logindPath, logindInterface, QStringLiteral("Inhibit"),
                 {QStringLiteral("sleep"), QStringLiteral("Tidemark"),
                  QStringLiteral("Write down what happened until then"), QStringLiteral("delay")},
                 [this](const QDBusMessage& reply) {
                     // If the preparations are finished by now, the sleep must not wait for this
                     // lock.
                     if (!isReadyToSleep)
                         delayLock = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
                 });
}

QCoro::Task<void> LogindMonitor::settleForSleep(std::uint64_t sleep) {
    try {
        co_await settle();
    } catch (const std::exception& error) {
        qWarning("Before the sleep of the machine: %s", error.what());
    }
    releaseDelay(sleep);
}

QCoro::Task<void> LogindMonitor::limitDelay(std::uint64_t sleep) {
    co_await clock.sleep(mostDelay, tasks.token());
    releaseDelay(sleep);
}

void LogindMonitor::releaseDelay(std::uint64_t sleep) {
    if (sleep != sleeps)
        return;
    isReadyToSleep = true;
    delayLock = {};
}

void LogindMonitor::prepareForShutdown(bool preparing) {
    if (preparing)
        center.post(notification::willPowerOff);
}

void LogindMonitor::setSessionActive(std::optional<bool> value) {
    // Without a value, the last known state is kept, also when logind restarts or the session is a
    // new one. The next known state is posted if it differs. The first one ever is not posted,
    // because there is nothing to compare it with.
    if (!value)
        return;
    const bool active = *value;
    const auto before = std::exchange(isSessionActive, active);
    if (before && *before != active)
        center.post(active ? notification::sessionDidBecomeActive
                           : notification::sessionDidResignActive);
}

} // namespace tidemark
