#include "platform/linux/ThermalWatch.h"

#include "app/base/Background.h"
#include "core/base/Error.h"
#include "platform/linux/NetlinkSocket.h"

#include <utility>

namespace tidemark {

ThermalWatch::ThermalWatch(std::filesystem::path sys, const MessageBus& bus, AppClock& clock,
                           std::function<void()> didChange, OpenEvents openEvents)
    : sys(std::move(sys)), clock(clock), didChange(std::move(didChange)),
      openEvents(std::move(openEvents)), profiles(bus, [this] { readEarly(); }) {
    tasks.start(watch());
}

ThermalWatch::~ThermalWatch() {
    tasks.requestStop();
    readEarly();
    tasks.drain();
}

void ThermalWatch::readEarly() {
    std::exchange(early, {}).request_stop();
}

QCoro::Task<void> ThermalWatch::watch() {
    const auto hold = tasks.hold();
    while (!tasks.isStopping()) {
        // Taken before the reading, so that a message that arrives during the reading ends the wait
        // below at once: the reading may have missed what the message is about.
        const auto sooner = early.get_token();
        co_await read();
        if (tasks.isStopping())
            break;
        const bool isTimeOver =
            co_await clock.sleep(timeToNext(), sooner, AppClock::Slack::allowed);
        if (isTimeOver)
            listen();
    }
}

QCoro::Task<void> ThermalWatch::read() {
    const auto work = [sys = sys, openEvents = openEvents,
                       isOpen = static_cast<bool>(events)](const std::stop_token&) {
        Reading reading{.zones = ThermalZones::read(sys), .events = {}};
        if (!isOpen && !reading.zones.zones.empty())
            reading.events = openEvents();
        return reading;
    };
    Reading reading;
    try {
        reading = co_await runInBackground(work);
    } catch (const Error&) {
        // No thread could be started: counts as a reading without zones.
    }
    if (tasks.isStopping())
        co_return;
    if (reading.events) {
        events = std::move(reading.events);
        eventsNotifier = std::make_unique<QSocketNotifier>(events.get(), QSocketNotifier::Read);
        QObject::connect(eventsNotifier.get(), &QSocketNotifier::activated, [this] {
            eventsNotifier->setEnabled(false);
            readEarly();
        });
    }
    pressure.receive(reading.zones, profiles.isTooHot(), clock.monotonicSeconds());
    const auto before = std::exchange(published, pressure.state());
    if (before != published)
        didChange();
}

/// After a message, the socket is watched again only when a whole interval has passed; messages
/// that arrived meanwhile are discarded. A zone whose temperature varies around a trip would
/// otherwise cause one reading after the other.
void ThermalWatch::listen() {
    if (!eventsNotifier || eventsNotifier->isEnabled())
        return;
    NetlinkSocket::discardAll(events.get());
    eventsNotifier->setEnabled(true);
}

double ThermalWatch::timeToNext() const {
    if (!pressure.state())
        return intervalWithoutZones;
    return pressure.isChanging() ? intervalWhileChanging : interval;
}

} // namespace tidemark
