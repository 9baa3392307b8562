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
/// report when the history is visible. When the user last saw it is a setting that the program
/// keeps itself. Main thread only.
class DigestCard : public Observable {
    Q_OBJECT

public:
    /// Seconds.
    static constexpr double leastAbsence = 86'400;

    /// The arguments must outlive this object.
    DigestCard(GrowthScreen& growth, HistoryScreen& screen, ModelState& state,
               Preferences& preferences, AppClock& clock);

    /// The card, if there is one to show. It stays until `dismiss` or the next return.
    const std::optional<HistoryDigest>& shown() const { return card; }
    /// The history became visible. If it was last visible `leastAbsence` ago or earlier and
    /// something happened since, a card follows, as soon as the history has been read. None is made
    /// at the first time.
    void windowShown();
    /// The history is not visible any more, or the program ends.
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
    /// The start of the card that is due or shown.
    std::optional<Date> since;
    /// The sources that the card was made from.
    std::uint64_t journal = 0;
    std::uint64_t activity = 0;
};

} // namespace tidemark
