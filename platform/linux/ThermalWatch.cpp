#include "platform/linux/ThermalWatch.h"

#include "app/base/Background.h"
#include "core/base/Error.h"

#include <utility>

namespace tidemark {

ThermalWatch::ThermalWatch(std::filesystem::path sys, const MessageBus& bus, AppClock& clock,
                           std::function<void()> didChange)
    : sys(std::move(sys)), clock(clock), didChange(std::move(didChange)),
      profiles(bus, [this] { std::exchange(early, {}).request_stop(); }) {
    tasks.start(watch());
}

ThermalWatch::~ThermalWatch() {
    tasks.requestStop();
    early.request_stop();
    tasks.drain();
}

QCoro::Task<void> ThermalWatch::watch() {
    const auto hold = tasks.hold();
    const auto work = [sys = sys](const std::stop_token&) { return ThermalZones::read(sys); };
    while (!tasks.isStopping()) {
        ThermalZones reading;
        try {
            reading = co_await runInBackground(work);
        } catch (const Error&) {
            // No thread could be started at present.
        }
        if (tasks.isStopping())
            break;
        pressure.receive(reading, profiles.isTooHot(), clock.monotonicSeconds());
        const auto before = std::exchange(published, pressure.state());
        if (before != published)
            didChange();
        co_await clock.sleep(timeToNext(), early.get_token(), AppClock::Slack::allowed);
    }
}

double ThermalWatch::timeToNext() const {
    if (!pressure.state())
        return intervalWithoutZones;
    return pressure.isChanging() ? intervalWhileChanging : interval;
}

} // namespace tidemark
