#include "core/activity/WiFiLinkHistory.h"

namespace tidemark {

bool WiFiLinkHistory::receive(std::optional<bool> connected, Date at) {
    if (!connected) {
        reset();
        return true;
    }
    if (sample == connected)
        return false;
    if (!sample)
        tracker = SettledTransition(delay, connected);
    sample = connected;
    tracker.receive(*connected, at);
    return true;
}

std::optional<SystemActivity> WiFiLinkHistory::settle(Date at) {
    const auto settled = tracker.settle(at);
    if (!settled)
        return std::nullopt;
    auto record =
        SystemActivity::observed(SystemActivity::Kind::wifiChanged, settled->firstObserved);
    record.wifiConnected = settled->after;
    return record;
}

} // namespace tidemark
