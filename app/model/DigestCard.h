#pragma once

#include "app/base/AppClock.h"
#include "app/base/Observable.h"
#include "app/model/GrowthScreen.h"
#include "app/model/HistoryScreen.h"
#include "app/preferences/Preferences.h"
#include "core/growth/HistoryDigest.h"

#include <optional>

namespace tidemark {

/// The card at the top of the timeline, for a user who comes back after a day or more. The windows
/// report when the history is visible. The time when the user last saw the history is stored in the
/// file of the settings, but is not a setting that the user can change. Main thread only.
class DigestCard : public Observable {
    Q_OBJECT

public:
    /// Seconds for which the history must have been invisible.
    static constexpr double leastAbsence = 86'400;

    /// The arguments must outlive this object.
    DigestCard(GrowthScreen& growth, HistoryScreen& screen, ModelState& state,
               Preferences& preferences, AppClock& clock);

    /// The card, if there is one to show. It stays until `dismiss` or the next return.
    const std::optional<HistoryDigest>& shown() const { return card; }
    /// Called when the history becomes visible. If the history was last visible `leastAbsence` ago
    /// or earlier and something happened since, makes a card as soon as the program has loaded the
    /// history. Makes none when the history has never been visible before.
    void windowShown();
    /// Called when the history is not visible any more, and when the program ends.
    void windowHidden() { noteSeen(); }
    void dismiss();

private:
    void noteSeen();
    void followState();
    void makeCard();

    GrowthScreen& growth;
    HistoryScreen& screen;
    ModelState& state;
    Preferences& preferences;
    AppClock& clock;
    std::optional<HistoryDigest> card;
    /// The start of the period that the card is about; absent when no card is due or shown.
    std::optional<Date> since;
    /// The revisions of the journal and the live activity that the card was made from.
    std::uint64_t journal = 0;
    std::uint64_t activity = 0;
};

} // namespace tidemark
