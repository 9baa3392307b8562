#include "app/model/BackgroundItemNotices.h"

#include "app/preferences/FollowSettings.h"
#include "core/growth/BackgroundItemNotice.h"

#include <algorithm>
#include <utility>

namespace tidemark {

BackgroundItemNotices::BackgroundItemNotices(ModelState& state, const Preferences& preferences,
                                             MakeNotifications make, OpeningOf openingOf)
    : state(state), preferences(preferences), make(std::move(make)),
      openingOf(std::move(openingOf)), captures(state.keptCaptures()) {
    connect(&state, &ModelState::changed, this, &BackgroundItemNotices::followState);
    followSettings(
        preferences, this, [this] { followSetting(); }, preferenceKeys::backgroundItemNotices);
    followSetting();
}

void BackgroundItemNotices::followSetting() {
    const bool isOn = read(preferences, preferenceKeys::backgroundItemNotices);
    if (isOn == (notifications != nullptr))
        return;
    notifications = isOn ? make() : nullptr;
}

void BackgroundItemNotices::followState() {
    const auto kept = state.keptCaptures();
    const bool isCapture = std::exchange(captures, kept) != kept;
    if (isCapture && notifications)
        notify(newEvents());
    const auto& events = state.journal()->events;
    lastEvent = events.empty() ? std::string() : events.back()->id;
}

/// The events of the journal after the last one that was seen here.
std::vector<Shared<Event>> BackgroundItemNotices::newEvents() const {
    const auto& events = state.journal()->events;
    const auto last = std::ranges::find(events.rbegin(), events.rend(), lastEvent,
                                        [](const auto& event) { return event->id; });
    return {last.base(), events.end()};
}

void BackgroundItemNotices::notify(const std::vector<Shared<Event>>& added) {
    auto notice = BackgroundItemNotice::of(newBackgroundItems(added), Calendar());
    if (!notice)
        return;
    notifications->show({.title = std::move(notice->title),
                         .body = std::move(notice->body),
                         .activated = openingOf(notice->eventID)});
}

} // namespace tidemark
