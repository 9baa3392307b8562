#include "core/presentation/HistoryMatches.h"

#include "tests/support/HistoryEvents.h"
#include "tests/support/SharedRecords.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

using namespace tidemark;
using test::event;
using test::ids;
using test::memoryEvent;

namespace {

using Events = std::vector<Shared<Event>>;

std::string found(const std::vector<std::string>& texts, std::string_view query) {
    Events events;
    for (std::size_t i = 0; i < texts.size(); ++i)
        events.emplace_back(memoryEvent(std::to_string(i), 0, MemoryRecord::Kind::clipboard,
                                        std::nullopt, texts[i]));
    return ids(HistoryMatches::find(events, query));
}

/// Sets the language of the user for its lifetime.
class Language {
public:
    explicit Language(const char* name) : before(icu::Locale::getDefault()) { set(name); }
    ~Language() { set(before); }

private:
    static void set(const icu::Locale& locale) {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(locale, status);
    }
    const icu::Locale before;
};

} // namespace

TEST(HistoryMatches, SearchesEveryTextOfAnEvent) {
    Event agent = event("agent", 3, EventCategory::background);
    agent.subtitle = "Sub Title";
    const Events events =
        test::shared(agent, memoryEvent("file", 2, MemoryRecord::Kind::fileOpened, "/Work/Plans"),
                     memoryEvent("clip", 1, MemoryRecord::Kind::clipboard, {}, "Grüße"));
    const std::pair<const char*, const char*> cases[] = {{"plans", "file"},
                                                         {"background items", "agent"},
                                                         {"GRÜSSE", "clip"},
                                                         {"agent sub", "agent"},
                                                         {"Recent Files", "file"},
                                                         {"  \n\t ", "agent file clip"},
                                                         {" title\n", "agent"},
                                                         {"nothing", ""},
                                                         {"clip   clipboard grü", "clip"},
                                                         {"clip  clipboard", ""}};
    for (const auto& [query, matches] : cases)
        EXPECT_EQ(ids(HistoryMatches::find(events, query)), matches) << query;
}

TEST(HistoryMatches, StopsAtTheLimitOrWhenStopped) {
    Events events;
    for (int i = 0; i < 100; ++i)
        events.emplace_back(event("e", -i));
    EXPECT_EQ(HistoryMatches::find(events, "e").size(), HistoryMatches::limit);
    EXPECT_EQ(HistoryMatches::find(events, "").back()->timestamp, Date{-39});
    std::stop_source source;
    source.request_stop();
    EXPECT_TRUE(HistoryMatches::find(events, "", source.get_token()).empty());
}

TEST(HistoryMatches, FoldsLettersByTheLanguageOfTheUser) {
    EXPECT_EQ(found({std::string("a\0b", 3), "ab"}, std::string_view("A\0B", 3)), "0");
    const std::vector<std::string> cities{"İstanbul", "istanbul", "ISTANBUL", "ısırgan"};
    EXPECT_EQ(found(cities, "ISTAN"), "1 2");
    EXPECT_EQ(found(cities, "İSTAN"), "0");
    const Language turkish("tr_TR");
    EXPECT_EQ(found(cities, "istan"), "0 1");
    EXPECT_EQ(found(cities, "ISTAN"), "2");
    EXPECT_EQ(found(cities, "ISIR"), "3");
}
