#include "core/activity/NetworkConnectionHistory.h"

namespace tidemark {

bool NetworkConnectionHistory::receive(const NetworkConnectionState& state, Date at) {
    if (sample == state)
        return false;
    sample = state;
    tracker.receive(state, at);
    return true;
}

std::optional<SystemActivity> NetworkConnectionHistory::settle(Date at) {
    const auto settled = tracker.settle(at);
    if (!settled)
        return std::nullopt;
    auto record =
        SystemActivity::observed(SystemActivity::Kind::networkChanged, settled->firstObserved);
    record.networkChange = NetworkConnectionChange{settled->before, settled->after};
    return record;
}

} // namespace tidemark
