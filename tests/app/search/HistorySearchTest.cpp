#include "app/search/HistorySearch.h"

#include "tests/app/support/Await.h"
#include "tests/support/HistoryEvents.h"

using namespace tidemark;
using test::event;

struct HistorySearchTest : testing::Test {
    HistorySearchTest() {
        std::vector<Shared<Event>> events;
        for (int i = 0; i < 50; ++i)
            events.emplace_back(event((i % 2 == 0 ? "even " : "odd ") + std::to_string(i), -i));
        history = std::make_shared<const MergedHistory>(MergedHistory::of(std::move(events)));
        search.emplace([this] { return history; },
                       [this, held = std::make_shared<int>()](const Shared<Event>& event) {
                           const std::weak_ptr isHeld = held;
                           if (closes)
                               search.reset();
                           EXPECT_FALSE(isHeld.expired()) << "destroyed while it runs";
                           opened = event->id;
                       });
    }
    void finish() {
        test::until([&] { return !search->searching; });
    }
    std::string found(const char* query) {
        search->setQuery(query);
        finish();
        return test::ids(*search->results);
    }
    std::string selected() { return search->selection->value_or("none"); }

    std::shared_ptr<const MergedHistory> history;
    std::string opened;
    /// True when opening an event destroys the search.
    bool closes = false;
    std::optional<HistorySearch> search;
};

TEST_F(HistorySearchTest, StartsWithTheNewestEvents) {
    EXPECT_TRUE(search->searching);
    finish();
    EXPECT_EQ(search->results->size(), 40U);
    EXPECT_EQ(selected(), "even 0");
    EXPECT_EQ(search->caption(), "Recent recorded history");
    search->setQuery("  ");
    EXPECT_TRUE(search->searching);
    finish();
    EXPECT_EQ(search->results->size(), 40U);
    EXPECT_EQ(found(" ODD 4"), "odd 41 odd 43 odd 45 odd 47 odd 49");
    EXPECT_EQ(search->caption(), "Up to 40 matching events");
    EXPECT_EQ(found("none"), "");
    EXPECT_EQ(selected(), "none");
    EXPECT_EQ(search->emptyTitle(), "No matching history");
}

TEST_F(HistorySearchTest, PublishesOnlyTheResultsOfTheLastQuery) {
    finish();
    std::string published;
    QObject::connect(&*search, &Observable::changed, [&] {
        if (!search->searching)
            published += std::to_string(search->results->size()) + " ";
    });
    for (const char* query : {"e", "ev", "even 4"})
        search->setQuery(query);
    finish();
    test::settle();
    EXPECT_EQ(published, "6 ");
    search->setQuery("even 4");
    EXPECT_FALSE(search->searching);
    // A running search ends when the object is destroyed.
    search->setQuery("odd");
    search.reset();
}

TEST_F(HistorySearchTest, MovesTheSelectionWithinTheResults) {
    EXPECT_EQ(found("odd 4"), "odd 41 odd 43 odd 45 odd 47 odd 49");
    const std::pair<int, const char*> moves[] = {
        {-1, "odd 41"}, {1, "odd 43"}, {1, "odd 45"}, {9, "odd 49"}, {1, "odd 49"}, {-2, "odd 45"},
    };
    for (const auto& [delta, id] : moves) {
        search->moveSelection(delta);
        EXPECT_EQ(selected(), id);
    }
    search->openSelected();
    EXPECT_EQ(opened, "odd 45");
    for (const auto& [delta, id] : {std::pair{1, "odd 41"}, std::pair{-1, "odd 49"}}) {
        search->selection = std::nullopt;
        search->moveSelection(delta);
        EXPECT_EQ(selected(), id);
    }
    found("none");
    opened = "";
    search->moveSelection(1);
    search->openSelected();
    EXPECT_EQ(opened + selected(), "none");

    found("odd 4");
    history.reset();
    closes = true;
    search->openSelected();
    EXPECT_EQ(opened, "odd 41");
}
