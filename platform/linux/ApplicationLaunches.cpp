#include "platform/linux/ApplicationLaunches.h"

namespace tidemark {

ApplicationLaunches::ApplicationLaunches(std::vector<std::unique_ptr<Source>> sources,
                                         AppClock& clock)
    : sources(std::move(sources)), clock(clock) {}

ApplicationLaunches::~ApplicationLaunches() {
    ApplicationLaunches::stop();
    tasks.drain();
}

void ApplicationLaunches::start(Report wanted) {
    report = std::move(wanted);
    for (const auto& source : sources)
        source->start(*this);
}

void ApplicationLaunches::stop() {
    report = {};
    for (const auto& source : sources)
        source->stop();
    instances.clear();
}

void ApplicationLaunches::assume(const std::string& instance, const Application& application) {
    instances.assume(instance, application);
}

void ApplicationLaunches::add(const std::string& instance, const Application& application,
                              Date moment, double now) {
    instances.add(instance, application, moment, now);
    if (!isSettling)
        tasks.start(settle());
}

void ApplicationLaunches::remove(const std::string& instance, Date moment) {
    const auto change = instances.remove(instance, moment);
    if (change && report)
        report(*change);
}

void ApplicationLaunches::forget(std::string_view firstWord) {
    instances.forget(firstWord);
}

QCoro::Task<void> ApplicationLaunches::settle() {
    const auto hold = tasks.hold();
    isSettling = true;
    while (const auto next = instances.nextSettling()) {
        const double left = *next - clock.monotonicSeconds();
        const bool goesOn = co_await clock.sleep(left, tasks.token());
        if (!goesOn)
            break;
        for (const auto& change : instances.settled(clock.monotonicSeconds()))
            if (report)
                report(change);
    }
    isSettling = false;
}

} // namespace tidemark
