#include "core/activity/ActivityEventBuilder.h"

#include <algorithm>
#include <array>

namespace tidemark::ActivityEventBuilder {

namespace {

using Kind = SystemActivity::Kind;

/// A change of the network within this many seconds of a change of the Wi-Fi link counts as caused
/// by it.
constexpr double oneMoment = 5;

constexpr std::array networking{Kind::networkChanged, Kind::bluetoothChanged, Kind::wifiChanged,
                                Kind::bluetoothPowerChanged};

/// The times at which the Wi-Fi link came up or went down, in ascending order.
class LinkTimes {
public:
    explicit LinkTimes(const std::vector<Shared<SystemActivity>>& activities) {
        for (const auto& activity : activities)
            if (activity->kind == Kind::wifiChanged && activity->wifiConnected)
                (*activity->wifiConnected ? up : down).push_back(activity->timestamp);
        std::ranges::sort(up);
        std::ranges::sort(down);
    }

    /// Whether the link came up (or went down) within `oneMoment` of `time`.
    bool changed(bool connected, Date time) const {
        const auto& times = connected ? up : down;
        // The nearest times are the first that is not before `time` and its predecessor.
        const auto next = std::ranges::lower_bound(times, time);
        return (next != times.end() && *next - time <= oneMoment)
               || (next != times.begin() && time - *std::prev(next) <= oneMoment);
    }

private:
    std::vector<Date> up;
    std::vector<Date> down;
};

/// True for a network change caused by the Wi-Fi link, its only interface.
bool followsLink(const SystemActivity& activity, const LinkTimes& links) {
    using enum NetworkConnectionState::Availability;
    if (activity.kind != Kind::networkChanged || !activity.networkChange)
        return false;
    const auto& [before, after] = *activity.networkChange;
    const bool came = after.availability == available;
    if (came == (before.availability == available))
        return false;
    const auto& interfaces = (came ? after : before).interfaces;
    return interfaces == std::set{NetworkConnectionState::Interface::wifi}
           && links.changed(came, activity.timestamp);
}

} // namespace

Event event(const Shared<SystemActivity>& record) {
    const SystemActivity& activity = *record;
    Event event;
    event.id = "activity-" + activity.id.text();
    event.timestamp = activity.timestamp;
    event.intervalStart = activity.timestamp;
    event.title = activity.title();
    event.subtitle = activity.detailSubtitle();
    event.category = std::ranges::count(networking, activity.kind) > 0 ? EventCategory::networking
                                                                       : EventCategory::system;
    event.importance = Importance::prominent;
    if (activity.environmentActivity)
        event.path = activity.environmentActivity->path;
    event.symbol = activity.symbol();
    event.systemActivity = record;
    return event;
}

std::vector<Shared<Event>> build(const std::vector<Shared<SystemActivity>>& from) {
    const LinkTimes links(from);
    std::vector<Shared<Event>> events;
    events.reserve(from.size());
    for (const auto& record : from)
        if (record->isTimelineEligible() && !followsLink(*record, links))
            events.emplace_back(event(record));
    return events;
}

} // namespace tidemark::ActivityEventBuilder
