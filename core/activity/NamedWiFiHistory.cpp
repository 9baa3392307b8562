#include "core/activity/NamedWiFiHistory.h"

#include <utility>

namespace tidemark {

namespace {

OptionalShared<WiFiContext> shared(std::optional<WiFiContext> network) {
    return network ? OptionalShared(*std::move(network)) : OptionalShared<WiFiContext>();
}

} // namespace

bool NamedWiFiHistory::receive(std::optional<WiFiObservation> observation, Date at) {
    if (!observation) {
        reset();
        return true;
    }
    if (isStartingPoint(*observation)) {
        tracker = SettledTransition(delay, observation);
        sample = std::move(observation);
        return false;
    }
    if (sample == observation)
        return false;
    sample = observation;
    tracker.receive(*std::move(observation), at);
    return true;
}

std::optional<SystemActivity> NamedWiFiHistory::settle(Date at) {
    const auto settled = tracker.settle(at);
    if (!settled)
        return std::nullopt;
    const auto& [before, after, firstObserved] = *settled;
    auto record = SystemActivity::observed(SystemActivity::Kind::wifiChanged, firstObserved);
    record.wifiConnected = after.connected;
    record.previousWiFi = shared(before.context);
    record.wifiContext = shared(after.connected ? after.context : before.context);
    return record;
}

bool NamedWiFiHistory::isStartingPoint(const WiFiObservation& observation) const {
    if (!sample)
        return true;
    const bool bothConnected = sample->connected && observation.connected;
    return bothConnected
           && sample->networkName().has_value() != observation.networkName().has_value();
}

} // namespace tidemark
