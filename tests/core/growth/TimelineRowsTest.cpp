#include "core/growth/TimelineRows.h"

#include "tests/core/growth/GrowthRecords.h"
#include "tests/support/HistoryEvents.h"

#include <gtest/gtest.h>

using namespace tidemark;
using test::day;
using test::hour;

namespace {

GapRow gap(double start, double end, std::optional<std::string> eventID = {}) {
    GapRow made;
    made.start = Date{start};
    made.end = Date{end};
    made.reason = GapRow::Reason::asleep;
    made.title = "gap of " + std::to_string(static_cast<int>((end - start) / hour));
    made.eventID = std::move(eventID);
    return made;
}

Event resumed(const std::string& id, double time) {
    Event made = test::event(id, time);
    made.observationGap = ObservationGap{};
    return made;
}

/// The rows, joined by " | ": "day" with the number of its events for a heading, the identifier of
/// an event, the title of a gap. A star follows the title of a gap that stands for an event.
std::string rowsOf(std::vector<Shared<Event>> events, const std::vector<GapRow>& gaps,
                   const std::set<Date>& unfolded = {}) {
    const Calendar calendar("UTC");
    const auto presentation = TimelinePresentation::build(
        TimelinePresentation::newestFirst(std::move(events)), Date::distantPast(),
        Date::distantFuture(), {}, {}, "", calendar);
    std::string text;
    for (const auto& row : TimelineRows::of(presentation, gaps, unfolded, calendar)) {
        text += text.empty() ? "" : " | ";
        switch (row.kind) {
        case TimelineRow::Kind::day:
            text += "day " + std::to_string(row.count);
            break;
        case TimelineRow::Kind::event:
            text += row.event->id;
            break;
        case TimelineRow::Kind::gap:
        case TimelineRow::Kind::gaps:
            text += row.gap->title + (row.event ? "*" : "");
            break;
        }
    }
    return text;
}

} // namespace

TEST(TimelineRows, HasEachGapAtTheTimeAtWhichItEnded) {
    using Events = std::vector<Shared<Event>>;
    const Events events{Shared(test::event("a", day + 10 * hour)),
                        Shared(test::event("b", day + 8 * hour)),
                        Shared(test::event("c", 9 * hour))};
    const struct {
        const char* what;
        std::vector<GapRow> gaps;
        const char* rows;
    } cases[] = {
        {"none", {}, "day 2 | a | b | day 1 | c"},
        {"between two events", {gap(day, day + 9 * hour)}, "day 2 | a | gap of 9 | b | day 1 | c"},
        {"at the time of an event",
         {gap(day, day + 8 * hour)},
         "day 2 | a | gap of 8 | b | day 1 | c"},
        {"at the end of a day", {gap(0, 3 * hour)}, "day 2 | a | b | day 1 | c | gap of 3"},
        {"on a later day without events",
         {gap(day, 3 * day)},
         "gap of 48 | day 2 | a | b | day 1 | c"},
        {"before everything", {gap(-9 * day, -8 * day)}, "day 2 | a | b | day 1 | c"},
    };
    for (const auto& [what, gaps, rows] : cases)
        EXPECT_EQ(rowsOf(events, gaps), rows) << what;
}

TEST(TimelineRows, ShowsAGapInsteadOfTheEventThatEndedIt) {
    EXPECT_EQ(rowsOf({Shared(resumed("r", 8 * hour)), Shared(resumed("other", 4 * hour))},
                     {gap(5 * hour, 8 * hour, "r")}),
              "day 2 | gap of 3* | other");
}

TEST(TimelineRows, FoldsManyGapsOfADay) {
    const std::vector<Shared<Event>> events{Shared(test::event("a", 20 * hour)),
                                            Shared(resumed("r", 9 * hour))};
    const std::vector<GapRow> gaps{gap(14 * hour, 15 * hour), gap(8 * hour, 9 * hour, "r"),
                                   gap(2 * hour, 4 * hour)};
    EXPECT_EQ(rowsOf(events, gaps), "day 2 | a | Not observed 3 times, 4 hours in total");
    EXPECT_EQ(rowsOf(events, gaps, {Date{0}}), "day 2 | a | gap of 1 | gap of 1* | gap of 2");
    EXPECT_EQ(rowsOf(events, {gaps[0], gaps[2]}), "day 2 | a | gap of 1 | r | gap of 2")
        << "few are not folded";
}
