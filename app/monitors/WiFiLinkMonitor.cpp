#include "app/monitors/WiFiLinkMonitor.h"

#include <algorithm>
#include <utility>

namespace tidemark {

WiFiLinkMonitor::WiFiLinkMonitor(WiFiSource& source, WiFiDetailsProvider& details, AppClock& clock,
                                 TaskScope& tasks)
    : source(source), details(details), clock(clock), timer(clock, tasks) {
    details.changed = [this] {
        if (isStarted)
            startSource();
    };
}

bool WiFiLinkMonitor::start(ActivityMonitor::Record to) {
    stop();
    record = std::move(to);
    isStarted = startSource();
    return isStarted;
}

bool WiFiLinkMonitor::startSource() {
    const auto names =
        details.areNamesAllowed() ? WiFiSource::Names::read : WiFiSource::Names::omit;
    return source.start(names, [this, number = ++generation](const WiFiSource::Links& links) {
        if (number == generation)
            observe(links);
    });
}

void WiFiLinkMonitor::stop() {
    ++generation;
    if (std::exchange(isStarted, false))
        source.stop();
    timer.stop();
    history.reset();
    record = nullptr;
}

void WiFiLinkMonitor::observe(const WiFiSource::Links& links) {
    const Date now = clock.now();
    const auto observed = observation(links);
    if (!history.receive(observed, now))
        return;
    timer.stop();
    if (observed)
        timer.start(now, NamedWiFiHistory::delay, [this](Date at) { settle(at); });
}

std::optional<WiFiObservation> WiFiLinkMonitor::observation(const WiFiSource::Links& links) const {
    if (!links)
        return std::nullopt;
    std::vector<WiFiDetails::Interface> interfaces;
    for (const auto& link : *links)
        interfaces.push_back(link.interface);
    const auto link = WiFiDetails::link(interfaces);
    if (!link)
        return std::nullopt;
    const auto described = std::ranges::find_if(*links, [&](const WiFiSource::Link& candidate) {
        return candidate.interface.name == link->interfaceName;
    });
    const bool hasDetails = described != links->end() && described->details;
    return WiFiObservation{
        .connected = link->connected,
        .context = hasDetails ? std::optional(details.context(*described->details)) : std::nullopt};
}

void WiFiLinkMonitor::settle(Date at) {
    auto change = history.settle(at);
    if (change && record)
        record(*std::move(change));
}

} // namespace tidemark
