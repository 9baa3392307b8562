#pragma once

#include "app/base/AppClock.h"
#include "app/base/Observable.h"
#include "app/base/TaskScope.h"
#include "app/model/ModelState.h"
#include "app/model/RecorderRuns.h"
#include "app/model/StorageHistoryKeeper.h"
#include "core/growth/GapRows.h"
#include "core/growth/GrowthReport.h"
#include "core/growth/HistoryDigest.h"
#include "core/growth/StorageChart.h"

#include <array>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tidemark {

/// How far back a chart and the list of what grew reach.
enum class GrowthSpan { day, week, month, quarter, year, all };
inline constexpr std::array growthSpans{GrowthSpan::day,     GrowthSpan::week, GrowthSpan::month,
                                        GrowthSpan::quarter, GrowthSpan::year, GrowthSpan::all};
/// "24 hours", "7 days", "30 days", "3 months", "1 year", "All".
std::string_view label(GrowthSpan span);
/// The start of the span that ends at `now`; absent for `all`.
std::optional<Date> startOf(GrowthSpan span, Date now);

/// Charts and the list of what grew, for the chosen subject and span. They are made in the
/// background, when a view asks for them and the choice or the sources have changed since they
/// were last made. Main thread only.
class GrowthScreen : public Observable {
    Q_OBJECT

public:
    /// What was made for one choice. Never modified.
    struct Content {
        std::vector<StorageSubject> subjects;
        StorageChart chart;
        GrowthReport growth;
    };

    /// The arguments must outlive this object.
    GrowthScreen(ModelState& state, StorageHistoryKeeper& sizes, RecorderRuns& runs,
                 AppClock& clock, const TaskScope& tasks);

    /// The content for the present choice; null until it was made for the first time. Starts making
    /// it anew where it is not up to date; `changed` is emitted when that is done. Meanwhile the
    /// old content is returned.
    std::shared_ptr<const Content> content();
    /// True while content for the present choice is being made.
    bool isPreparing() const { return runningFor.has_value(); }
    /// Why the sizes of earlier years are missing, as a sentence.
    const std::optional<std::string>& problem() const { return sizes.problem(); }

    /// Path of the chosen subject; empty for free space.
    const std::string& subject() const { return chosenPath; }
    GrowthSpan span() const { return chosenSpan; }
    void choose(std::string path);
    void setSpan(GrowthSpan span);

    /// What was not observed after `since` up to now, for the timeline. A gap may begin before
    /// `since`.
    std::vector<GapRow> gaps(Date since) const;

    /// The digest of the events of the timeline later than `since`.
    HistoryDigest digest(const std::vector<Shared<Event>>& timeline, Date since) const;

    /// The journal and the daily sizes as they are now.
    GrowthSource source() const { return {state.journal(), sizes.history()}; }

private:
    /// What content is made from: a higher number is a newer source.
    struct Revisions {
        std::uint64_t journal = 0;
        std::uint64_t sizes = 0;
        bool operator==(const Revisions&) const = default;
    };
    struct Choice {
        std::string path;
        GrowthSpan span{};
        Revisions revisions;
        bool operator==(const Choice&) const = default;
    };

    void followSources();
    Choice present() const;
    GapSource gapSource() const;
    QCoro::Task<void> prepare(Choice choice, std::stop_token stop);

    ModelState& state;
    StorageHistoryKeeper& sizes;
    RecorderRuns& runs;
    AppClock& clock;
    const TaskScope& tasks;
    Revisions seen;
    std::string chosenPath;
    GrowthSpan chosenSpan = GrowthSpan::month;
    std::shared_ptr<const Content> made;
    std::optional<Choice> madeFor;
    std::optional<Choice> runningFor;
    std::stop_source stopping{std::nostopstate};
};

} // namespace tidemark
