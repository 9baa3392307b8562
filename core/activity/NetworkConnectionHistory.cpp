#include "core/activity/NetworkConnectionHistory.h"

#include <utility>

namespace tidemark {

namespace {

/// True when the states differ only in facts that one of them does not know.
bool differInKnowledge(NetworkConnectionState before, NetworkConnectionState after) {
    const auto forgetUnknown = [](std::optional<bool>& one, std::optional<bool>& other) {
        if (one.has_value() != other.has_value())
            one = other = std::nullopt;
    };
    forgetUnknown(before.expensive, after.expensive);
    forgetUnknown(before.constrained, after.constrained);
    return before == after;
}

} // namespace

bool NetworkConnectionHistory::receive(const NetworkConnectionState& state, Date at) {
    if (sample == state)
        return false;
    sample = state;
    tracker.receive(state, at);
    return true;
}

std::optional<SystemActivity> NetworkConnectionHistory::settle(Date at) {
    const auto settled = tracker.settle(at);
    if (!settled || differInKnowledge(settled->before, settled->after))
        return std::nullopt;
    auto record =
        SystemActivity::observed(SystemActivity::Kind::networkChanged, settled->firstObserved);
    record.networkChange.emplace({settled->before, settled->after});
    return record;
}

} // namespace tidemark
