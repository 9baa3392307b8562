#include "app/model/DigestCard.h"

#include "app/preferences/PreferenceKeys.h"

#include <utility>

namespace tidemark {

namespace {

/// When the history was last visible; absent if it never was.
std::optional<Date> lastSeen(const Preferences& preferences) {
    const auto seconds = read(preferences, preferenceKeys::historyLastSeen);
    if (seconds == 0)
        return std::nullopt;
    return Date::fromUnix(static_cast<double>(seconds));
}

} // namespace

DigestCard::DigestCard(GrowthScreen& growth, HistoryScreen& screen, ModelState& state,
                       Preferences& preferences, AppClock& clock)
    : growth(growth), screen(screen), state(state), preferences(preferences), clock(clock) {
    connect(&state, &ModelState::changed, this, &DigestCard::followState);
}

void DigestCard::windowShown() {
    const auto last = lastSeen(preferences);
    noteSeen();
    if (!last || clock.now() - *last < leastAbsence)
        return;
    since = last;
    if (state.loaded())
        makeCard();
}

void DigestCard::dismiss() {
    since.reset();
    card.reset();
    noteChange();
}

void DigestCard::noteSeen() {
    preferences.note(preferenceKeys::historyLastSeen.name,
                     static_cast<std::int64_t>(clock.now().secondsSince1970()));
}

/// Makes the card that is due, and again when its sources have changed: the records of the live
/// activity are read after the journal.
void DigestCard::followState() {
    if (!since || !state.loaded())
        return;
    if (journal != state.journalRevision() || activity != state.activityRevision())
        makeCard();
}

void DigestCard::makeCard() {
    journal = state.journalRevision();
    activity = state.activityRevision();
    auto digest = growth.digest(screen.history()->timeline, *since);
    card = digest.isEmpty() ? std::nullopt : std::optional(std::move(digest));
    noteChange();
}

} // namespace tidemark
