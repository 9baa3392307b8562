#include "core/timeline/TimelinePresentation.h"

#include "tests/support/HistoryEvents.h"
#include "tests/support/Observations.h"
#include "tests/support/SharedRecords.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace tidemark;
using test::event;
using test::ids;

namespace {

using Events = std::vector<Shared<Event>>;

TimelinePresentation presented(const Events& events, std::string_view search = "",
                               std::optional<EventCategory> category = {},
                               const std::optional<std::set<EventCategory>>& categories = {},
                               const char* zone = "UTC") {
    return TimelinePresentation::build(events, Date{0}, Date{1e6}, category, categories, search,
                                       Calendar(zone));
}

} // namespace

TEST(TimelinePresentation, FiltersByTime) {
    const Events events = test::shared(event("late", 1e6 + 1), event("through", 1e6),
                                       event("in", 5), event("after", 0));
    EXPECT_EQ(ids(presented(events).events), "through in");
    EXPECT_EQ(presented(events).applicationCount, 2U);
    EXPECT_EQ(presented({}), TimelinePresentation());
}

TEST(TimelinePresentation, CountsBeforeItFiltersByCategory) {
    Events events;
    double time = 100;
    for (const auto& entry : json::rawValues<EventCategory>)
        for (std::size_t i = 0; i <= static_cast<std::size_t>(entry.value); ++i)
            events.emplace_back(event(std::string(entry.text), --time, entry.value));
    const auto none = presented(events, "", EventCategory::storage, std::set<EventCategory>());
    EXPECT_TRUE(none.events.empty() && none.days.empty());
    EXPECT_EQ((std::vector{none.applicationCount, none.backgroundCount, none.storageCount,
                           none.systemCount, none.networkingCount, none.fileCount,
                           none.downloadCount, none.clipboardCount}),
              (std::vector<std::size_t>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(presented(events).events.size(), 36U);
    EXPECT_EQ(presented(events, "", EventCategory::storage).events.size(), 3U);
    EXPECT_EQ(presented(events, "", EventCategory::storage,
                        std::set{EventCategory::system, EventCategory::files})
                  .events.size(),
              10U);
}

TEST(TimelinePresentation, SearchesAllTextsOfAnEvent) {
    Event clip = event("clip", 4, EventCategory::clipboard);
    clip.title = "Copied";
    clip.subtitle = "From";
    clip.path = "/notes";
    MemoryRecord memory;
    memory.text = "Café secret";
    memory.appName = "Editor";
    clip.memory.emplace(std::move(memory));
    Event installed = event("installed", 3);
    installed.title = "stale";
    installed.changes = {change::ApplicationInstalled{{Shared(test::application("Lantern"))}}};
    const Events events = test::shared(clip, installed);
    const std::pair<const char*, const char*> cases[] = {
        {"CAFÉ SECRET", "clip"},
        {"copied from /notes", "clip"},
        {"editor", "clip"},
        {"secret editor", "clip"},
        {"lantern INSTALLED", "installed"},
        {"stale", ""},
        {"from  ", ""},
        {" ", "clip installed"},
    };
    for (const auto& [phrase, found] : cases)
        EXPECT_EQ(ids(presented(events, phrase).events), found) << phrase;
    EXPECT_EQ(presented(events, "secret").applicationCount, 0U);
}

TEST(TimelinePresentation, GroupsByLocalDays) {
    // "a" is at 23:30 UTC, "b" an hour later, and "c" on the third day.
    const Events events = test::shared(event("c", 200'000), event("b", 88'200), event("a", 84'600));
    const auto days = [&](const char* zone) {
        std::string text;
        for (const auto& day : presented(events, "", {}, {}, zone).days)
            text +=
                std::to_string(std::lround(day.id.secondsSince2001)) + ":" + ids(day.events) + "; ";
        return text;
    };
    EXPECT_EQ(days("UTC"), "172800:c; 86400:b; 0:a; ");
    EXPECT_EQ(days("Asia/Tokyo"), "140400:c; 54000:b a; ");
    const Events unsorted{events[1], events[0], events[1]};
    EXPECT_EQ(presented(unsorted).days.size(), 3U);
}

TEST(TimelinePresentation, OrdersIdsAsText) {
    EXPECT_EQ(ids(TimelinePresentation::newestFirst(test::shared(
                  event("x-2", 1), event("x-10", 1), event("old", 0), event("new", 2)))),
              "new x-10 x-2 old");
}

RC_GTEST_PROP(TimelinePresentation, OrderDoesNotDependOnTheInput, (std::uint32_t seed)) {
    Events events;
    for (int i = 0; i < 40; ++i)
        events.emplace_back(event(std::to_string(i), *rc::gen::inRange(0, 5)));
    Events shuffled = events;
    std::ranges::shuffle(shuffled, std::mt19937(seed));
    RC_ASSERT(TimelinePresentation::newestFirst(shuffled)
              == TimelinePresentation::newestFirst(events));
}
